#include "files/AtomicFile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
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

const char kTemporaryMark[] = ".vorel-save-";

QString temporaryName(const QFileInfo& target, qint64 process) {
    return target.fileName() + kTemporaryMark + QString::number(process);
}

bool processGone(qint64 process) {
    return process > 0 && ::kill(static_cast<pid_t>(process), 0) != 0 && errno == ESRCH;
}

// Temporary files that saves of this target left when they were killed.
void removeLeftovers(const QFileInfo& target) {
    QDir folder = target.absoluteDir();
    const QString prefix = target.fileName() + kTemporaryMark;
    for (const QString& candidate : folder.entryList(QDir::Files | QDir::Hidden)) {
        if (!candidate.startsWith(prefix))
            continue;
        bool isNumber = false;
        const qint64 process = candidate.mid(prefix.size()).toLongLong(&isNumber);
        if (isNumber && processGone(process))
            folder.remove(candidate);
    }
}

// Whatever went wrong, the temporary file goes; the target is untouched.
FileResult abandon(QFile& file, FileResult result) {
    file.close();
    file.remove();
    return result;
}

} // namespace

FileResult writeFileAtomically(const std::string& path, const std::vector<ByteBlock>& blocks,
                               Progress& progress, double from, double to) {
    const QString name = QString::fromStdString(path);
    const QFileInfo target(name);
    if (target.isDir())
        return FileResult::failed(writeFailure(path, "it is a folder"));
    removeLeftovers(target);
    QFile file(target.absolutePath() + "/" +
               temporaryName(target, QCoreApplication::applicationPid()));
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return FileResult::failed(writeFailure(path, file.errorString().toStdString()));
    if (target.exists())
        file.setPermissions(QFile::permissions(name));

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
                return abandon(
                    file, FileResult::failed(writeFailure(path, file.errorString().toStdString())));
            written += piece;
            if (!progress.step(written, total))
                return abandon(file, FileResult::cancelled(writeCancelled(path)));
        }
    }
    // The last moment to stop: everything is written, nothing is replaced yet.
    if (!progress.stage(to, to, "Replacing the file"))
        return abandon(file, FileResult::cancelled(writeCancelled(path)));
    if (!file.flush() || ::fsync(file.handle()) != 0)
        return abandon(file,
                       FileResult::failed(writeFailure(path, file.errorString().toStdString())));
    file.close();
    if (std::rename(QFile::encodeName(file.fileName()).constData(),
                    QFile::encodeName(name).constData()) != 0) {
        const std::string problem = std::strerror(errno);
        file.remove();
        return FileResult::failed(writeFailure(path, problem));
    }
    syncDirectoryOf(name);
    return FileResult::done();
}

} // namespace runtime
