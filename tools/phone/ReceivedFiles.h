#pragma once

#include <QJsonObject>
#include <QString>

#include <map>
#include <memory>
#include <optional>

class QSaveFile;

namespace brenvale::phone {

/// The name under which a file of the desktop is stored: the last component of what it is called. Nothing
/// where that leaves no name, so that no file can land outside the folder.
std::optional<QString> storedFileName(const QString& fileName);

/// Puts the files that the desktop sends into a folder. A file appears there when it is whole, in the place
/// of an older one of its name; what is unfinished at the end is dropped. One thread at a time.
class ReceivedFiles {
public:
    explicit ReceivedFiles(QString folder);
    ~ReceivedFiles();
    ReceivedFiles(const ReceivedFiles&) = delete;
    ReceivedFiles(ReceivedFiles&&) = delete;
    ReceivedFiles& operator=(const ReceivedFiles&) = delete;
    ReceivedFiles& operator=(ReceivedFiles&&) = delete;

    /// Takes a message of the desktop. Gives a line for people when a file is finished or could not be
    /// stored.
    std::optional<QString> take(const QJsonObject& message);

private:
    std::optional<QString> start(const QString& fileName, qint64 size);
    std::optional<QString> append(const QString& fileName, const QJsonObject& message);
    std::optional<QString> openFile(const QString& fileName);
    QString finish(const QString& fileName);
    QString giveUp(const QString& fileName);

    QString folder_;
    std::map<QString, std::unique_ptr<QSaveFile>> files_; ///< the open ones, by the desktop's name for them
};

} // namespace brenvale::phone
