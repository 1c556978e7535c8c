#pragma once

#include "records/RecordId.h"

#include <QHash>
#include <QList>
#include <QObject>
#include <QString>
#include <QUuid>

#include <functional>
#include <optional>

namespace brenvale {

/// A contact that a search has found.
struct ContactMatch {
    QString name;
    QString phone;    ///< as shown
    QString phoneRaw; ///< as stored
    /// The identity of the row, another one for each that is made.
    const QUuid id = makeRecordId(); // NOLINT(cppcoreguidelines-avoid-const-or-ref-data-members)
};

/// The place of an address book on the desktop, of which there is none: nobody is asked for access, and
/// nothing is ever found. All names that are shown come from the phone (ContactNames.h). Any thread.
class ContactsManager final : public QObject {
    Q_OBJECT
    Q_PROPERTY(QHash<QString, QString> nameCache MEMBER nameCache NOTIFY nameCacheChanged)

public:
    /// The one of this process.
    [[nodiscard]] static ContactsManager& shared();

    /// Names by number; nobody fills it.
    QHash<QString, QString> nameCache;

    /// Access is never given: `completion`, where there is one, is called with false before this returns, and
    /// no alert is shown.
    void requestAccess(bool showDeniedAlert = false,
                       const std::function<void(bool isGranted)>& completion = {});

    /// Nothing, also where `nameCache` has a name.
    [[nodiscard]] std::optional<QString> cachedName(const QString& number) const;

    /// Nothing, whatever is looked for.
    [[nodiscard]] QList<ContactMatch> search(const QString& query) const;

    /// The decimal digits of a text, of any script, in order and as they are. Pure.
    [[nodiscard]] static QString digitsOnly(const QString& text);

signals:
    void nameCacheChanged();

private:
    ContactsManager() = default;
};

} // namespace brenvale
