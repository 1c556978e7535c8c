#pragma once

#include "messages/CallListModel.h"
#include "messages/Sims.h"

#include <QObject>
#include <QVariantList>

class QTimer;

namespace brenvale {

class ContactNames;
class HistoryStore;
class WebSocketServer;
struct Platform;

/// The state of the tab with the dial pad and the phone's call log, which is kept here and nowhere else.
/// On main.
class CallsTab final : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString dialpadNumber READ dialpadNumber NOTIFY dialpadNumberChanged)
    Q_PROPERTY(QVariantList dialButtons READ dialButtons CONSTANT)
    Q_PROPERTY(brenvale::CountedListModel* phoneCallLog READ callListModel CONSTANT)
    Q_PROPERTY(brenvale::Sims* sims READ sims CONSTANT)

public:
    /// All arguments must outlive the tab.
    CallsTab(Platform& platform, WebSocketServer& server, HistoryStore& history, const ContactNames& names,
             Sims& sims);
    ~CallsTab() override;
    CallsTab(const CallsTab&) = delete;
    CallsTab& operator=(const CallsTab&) = delete;

    [[nodiscard]] const QString& dialpadNumber() const { return dialpadNumber_; }
    void setDialpadNumber(const QString& number);

    /// Maps with "main" and "letters", row by row.
    [[nodiscard]] static QVariantList dialButtons();

    [[nodiscard]] CallListModel* callListModel() { return &calls_; }
    [[nodiscard]] const QList<CallRecord>& phoneCallLog() const { return calls_.records(); }

    /// The names must know `log` already.
    void setPhoneCallLog(const QList<CallRecord>& log);

    [[nodiscard]] Sims* sims() { return &sims_; }

    Q_INVOKABLE void appendToDialpadNumber(const QString& text);
    Q_INVOKABLE void removeLastFromDialpadNumber();

    /// What the pad does with a key of the keyboard, a `Qt::Key` and the text that it types; false where it
    /// is not the pad's.
    Q_INVOKABLE bool dialpadKeyPressed(int key, const QString& characters);

    /// Has the phone call the number on the display and announces the call. Does nothing on an empty display.
    Q_INVOKABLE void startCall();

    /// Puts `number` on the display and calls it.
    Q_INVOKABLE void redial(const QString& number);
    void endCall();

    /// "MM:SS", with as many minutes as it takes. Pure.
    [[nodiscard]] static QString formatDuration(qint64 seconds);

    /// Shows the dates afresh: what was today when it was shown may be yesterday by now.
    void refreshDates();

    // No control shows or changes these.
    bool isSpeakerOn = false;
    bool isMuted = false;
    QTimer* timer = nullptr;

signals:
    void dialpadNumberChanged();

private:
    Platform& platform_;
    WebSocketServer& server_;
    HistoryStore& history_;
    const ContactNames& names_;
    Sims& sims_;
    CallListModel calls_;
    QString dialpadNumber_;
};

} // namespace brenvale
