#include "files/AtomicFile.h"

#include <QFileInfo>
#include <QSaveFile>
#include <algorithm>
#include <fcntl.h>
#include <unistd.h>

namespace runtime {

namespace {

// Large blocks are written in pieces so that progress moves and a request to stop is heard.
constexpr std::size_t kPieceBytes = 4u << 20;

// After the rename the new directory entry is only durable once the directory is synced.
void syncDirectoryOf(const QString& path) {
    const QByteArray directory = QFileInfo(path).absolutePath().toLocal8Bit();
    int fd = ::open(directory.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0)
        return;
    ::fsync(fd);
    ::close(fd);
}

} // namespace

FileResult writeFileAtomically(const std::string& path, const std::vector<ByteBlock>& blocks,
                               Progress& progress, double from, double to) {
    const QString name = QString::fromStdString(path);
    QSaveFile file(name);
    if (!file.open(QIODevice::WriteOnly))
        return FileResult::failed(writeFailure(path, file.errorString().toStdString()));

    std::uint64_t total = 0;
    for (const ByteBlock& block : blocks)
        total += block.size;
    progress.stage(from, to, "Writing the file");
    std::uint64_t written = 0;
    for (const ByteBlock& block : blocks) {
        const char* bytes = static_cast<const char*>(block.data);
        for (std::size_t offset = 0; offset < block.size; offset += kPieceBytes) {
            const std::size_t piece = std::min(kPieceBytes, block.size - offset);
            if (file.write(bytes + offset, static_cast<qint64>(piece)) !=
                static_cast<qint64>(piece))
                return FileResult::failed(writeFailure(path, file.errorString().toStdString()));
            written += piece;
            if (!progress.step(written, total)) {
                file.cancelWriting();
                return FileResult::cancelled(writeCancelled(path));
            }
        }
    }
    // The last moment to stop: everything is written, nothing is replaced yet.
    if (!progress.stage(to, to, "Replacing the file")) {
        file.cancelWriting();
        return FileResult::cancelled(writeCancelled(path));
    }
    if (!file.commit())
        return FileResult::failed(writeFailure(path, file.errorString().toStdString()));
    syncDirectoryOf(name);
    return FileResult::done();
}

} // namespace runtime
