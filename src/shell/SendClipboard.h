#pragma once

namespace brenvale {

class Pasteboard;
class WebSocketServer;

/// Sends the clipboard's text to the phone once its owner gives it, unless it is empty. Both must outlive
/// that. On main.
void sendClipboard(Pasteboard& pasteboard, WebSocketServer& server);

} // namespace brenvale
