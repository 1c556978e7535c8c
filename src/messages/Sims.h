#pragma once

#include "records/Published.h"
#include "records/SimInfo.h"

#include <QList>
#include <QObject>
#include <QStringList>

namespace brenvale {

class HistoryStore;

/// The phone's SIMs and the one that messages and calls go out from; the tabs for both share it. On main.
class Sims final : public QObject {
    Q_OBJECT
    Q_PROPERTY(QStringList simCarriers READ simCarriers NOTIFY simsChanged)
    Q_PROPERTY(int selectedSimIndex READ selectedSimIndex WRITE setSelectedSimIndex NOTIFY simsChanged)
    Q_PROPERTY(bool showsDialerSims READ showsDialerSims NOTIFY simsChanged)
    Q_PROPERTY(int dialerSimIndex READ dialerSimIndex WRITE setDialerSimIndex NOTIFY simsChanged)

public:
    /// `history` must outlive the SIMs. Those that it has already select none of them.
    explicit Sims(HistoryStore& history);
    ~Sims() override;
    Sims(const Sims&) = delete;
    Sims& operator=(const Sims&) = delete;

    [[nodiscard]] QStringList simCarriers() const;

    /// The slot that messages and calls go out from, whether the phone still has it or not.
    [[nodiscard]] qint64 selectedSimSlot() const { return selectedSimSlot_; }
    void setSelectedSimSlot(qint64 slot);

    /// The place of that slot in `simCarriers`; -1 where it is not there.
    [[nodiscard]] int selectedSimIndex() const;
    void setSelectedSimIndex(int index);

    /// The dial pad offers slots 0 and 1 by number, where the phone has several SIMs; -1 is any other.
    [[nodiscard]] bool showsDialerSims() const;
    [[nodiscard]] int dialerSimIndex() const;
    void setDialerSimIndex(int index);

signals:
    void simsChanged();

private:
    void simsReported(const QList<SimInfo>& sims);

    QList<SimInfo> sims_;
    qint64 selectedSimSlot_ = 0;
    Subscription reports_; ///< last: no observer is called while the rest goes
};

} // namespace brenvale
