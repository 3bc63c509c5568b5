#include "files/InputFile.h"

#include <QFile>
#include <QFileInfo>

namespace runtime {

bool readWholeFile(const std::string& path, std::uint64_t maxBytes,
                   std::vector<unsigned char>& bytes, std::string& problem) {
    const QString name = QString::fromStdString(path);
    QFileInfo info(name);
    if (!info.exists()) {
        problem = "the file does not exist";
        return false;
    }
    if (!info.isFile()) {
        problem = "it is not a regular file";
        return false;
    }
    if (static_cast<std::uint64_t>(info.size()) > maxBytes) {
        problem = "the file is larger than " + std::to_string(maxBytes) + " bytes";
        return false;
    }
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly)) {
        problem = file.errorString().toStdString();
        return false;
    }
    bytes.resize(static_cast<std::size_t>(info.size()));
    qint64 got = bytes.empty() ? 0
                               : file.read(reinterpret_cast<char*>(bytes.data()),
                                           static_cast<qint64>(bytes.size()));
    if (got != static_cast<qint64>(bytes.size())) {
        problem = "the file could not be read whole";
        return false;
    }
    return true;
}

} // namespace runtime
