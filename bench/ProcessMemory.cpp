#include "ProcessMemory.h"

#include <QFile>

namespace brenvale::bench {

long long statusField(const QString& file, const QByteArray& field) {
    QFile status(file);
    if (!status.open(QFile::ReadOnly)) {
        return 0;
    }
    for (const auto& line : status.readAll().split('\n')) {
        if (line.startsWith(field + ':')) {
            return line.mid(field.size() + 1).simplified().split(' ').first().toLongLong();
        }
    }
    return 0;
}

double mebibytesOf(pid_t process, const QByteArray& field) {
    const auto kibibytes = statusField(QStringLiteral("/proc/%1/status").arg(process), field);
    return static_cast<double>(kibibytes) / 1024;
}

} // namespace brenvale::bench
