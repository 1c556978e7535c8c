#include "messages/CallsTab.h"

#include "link/WebSocketServer.h"
#include "messages/Characters.h"
#include "messages/ContactNames.h"
#include "messages/DialerKeyHandler.h"
#include "platform/InternalNotifications.h"
#include "platform/Platform.h"
#include "records/HistoryStore.h"
#include "records/PreparedCall.h"

namespace brenvale {

CallsTab::CallsTab(Platform& platform, WebSocketServer& server, HistoryStore& history,
                   const ContactNames& names, Sims& sims)
    : platform_(platform),
      server_(server),
      history_(history),
      names_(names),
      sims_(sims),
      calls_(names, platform.clock) {}

CallsTab::~CallsTab() = default;

QVariantList CallsTab::dialButtons() {
    const auto button = [](const QString& main, const QString& letters) {
        return QVariantMap{{QStringLiteral("main"), main}, {QStringLiteral("letters"), letters}};
    };
    return {button(QStringLiteral("1"), {}),
            button(QStringLiteral("2"), QStringLiteral("A B C")),
            button(QStringLiteral("3"), QStringLiteral("D E F")),
            button(QStringLiteral("4"), QStringLiteral("G H I")),
            button(QStringLiteral("5"), QStringLiteral("J K L")),
            button(QStringLiteral("6"), QStringLiteral("M N O")),
            button(QStringLiteral("7"), QStringLiteral("P Q R S")),
            button(QStringLiteral("8"), QStringLiteral("T U V")),
            button(QStringLiteral("9"), QStringLiteral("W X Y Z")),
            button(QStringLiteral("*"), {}),
            button(QStringLiteral("0"), QStringLiteral("+")),
            button(QStringLiteral("#"), {})};
}

void CallsTab::setDialpadNumber(const QString& number) {
    if (number != dialpadNumber_) {
        dialpadNumber_ = number;
        emit dialpadNumberChanged();
    }
}

void CallsTab::appendToDialpadNumber(const QString& text) {
    setDialpadNumber(dialpadNumber_ + text);
}

void CallsTab::removeLastFromDialpadNumber() {
    setDialpadNumber(withoutLastCharacter(dialpadNumber_));
}

bool CallsTab::dialpadKeyPressed(int key, const QString& characters) {
    auto number = dialpadNumber_;
    DialerKeyHandler handler{.dialpadNumber = number, .isCallActive = false, .onReturn = [this] {
                                 startCall();
                             }};
    const bool isHandled = handler.handle(key, characters);
    setDialpadNumber(number);
    return isHandled;
}

void CallsTab::startCall() {
    if (dialpadNumber_.isEmpty()) {
        return;
    }
    server_.makeCall(dialpadNumber_, sims_.selectedSimSlot());
    platform_.internalNotifications.post(
        InternalNotifications::prepareActiveCall,
        PreparedCall{.number = dialpadNumber_, .name = names_.contactName(dialpadNumber_)});
}

void CallsTab::redial(const QString& number) {
    setDialpadNumber(number);
    startCall();
}

void CallsTab::endCall() {
    server_.hangupCall();
    history_.incomingCallInfo.set({});
    isSpeakerOn = false;
    isMuted = false;
}

QString CallsTab::formatDuration(qint64 seconds) {
    return QString::asprintf("%02lld:%02lld", static_cast<long long>(seconds / 60),
                             static_cast<long long>(seconds % 60));
}

void CallsTab::setPhoneCallLog(const QList<CallRecord>& log) {
    calls_.setCalls(log);
    calls_.refresh();
}

void CallsTab::refreshDates() {
    calls_.refresh();
}

} // namespace brenvale
