#include "link/WebSocketServer.h"
#include "link/WireText.h"

namespace brenvale {

void WebSocketServer::findDevice() {
    send(findDeviceText);
}

void WebSocketServer::sendMediaCommand(const QString& command) {
    send(mediaCommandText(command));
}

void WebSocketServer::sendNavCommand(const QString& command) {
    send(navCommandText(command));
}

void WebSocketServer::requestSmsHistory() {
    send(getSmsHistoryText);
}

void WebSocketServer::requestCallHistory() {
    send(getCallHistoryText);
}

void WebSocketServer::sendClipboard(const QString& text) {
    send(clipboardText(text));
}

void WebSocketServer::makeCall(const QString& number, qint64 simSlot) {
    send(makeCallText(number, simSlot));
}

void WebSocketServer::answerCall() {
    send(answerCallText);
}

void WebSocketServer::hangupCall() {
    send(hangupCallText);
}

void WebSocketServer::toggleSpeaker(bool enabled) {
    send(toggleSpeakerText(enabled));
}

void WebSocketServer::toggleMute(bool enabled) {
    send(toggleMuteText(enabled));
}

void WebSocketServer::sendReply(const QString& key, const QString& text) {
    send(replyText(key, text));
}

void WebSocketServer::sendSms(const QString& number, const QString& body, qint64 simSlot) {
    send(sendSmsText(number, body, simSlot));
}

} // namespace brenvale
