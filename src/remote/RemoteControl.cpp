#include "link/Json.h"
#include "link/WebSocketServer.h"
#include "platform/AccessibilityTrust.h"
#include "platform/Log.h"
#include "platform/Platform.h"
#include "platform/ScriptRunner.h"
#include "remote/RemoteCommand.h"

namespace brenvale {

namespace {

QByteArray bytesOf(std::string_view text) {
    return {text.data(), static_cast<qsizetype>(text.size())};
}

/// A part of a move; what is missing or no number does not move, and does not keep the other part from it.
double numberOrZero(const JsonObject& json, std::string_view key) {
    const auto value = json.value(key);
    return value ? value->number().value_or(0) : 0;
}

} // namespace

void WebSocketServer::handleRemoteControl(const JsonObject& json) {
    if (!link_.access.remoteControl) {
        return; // the user's settings want none
    }
    const auto command = json.utf8("command");
    if (!command) {
        return;
    }
    const auto type = json.utf8("type").value_or("remote");
    platform_.log.line("[WebSocketServer] Command received: " + bytesOf(*command) +
                       " [Type: " + bytesOf(type) + ']');
    if (type == "keyboard_text") {
        if (const auto text = json.string("text")) {
            platform_.log.line("[WebSocketServer] Typing unicode text: " + text->toUtf8());
            sendUnicodeText(*text);
        }
    } else if (type == "mouse_move") {
        handleMouseMove(json);
    } else if (type == "mouse_click") {
        handleMouseClick(json);
    } else if (type == "media") {
        pressMediaKey(*command);
    } else {
        performCommand(*command, json);
    }
}

void WebSocketServer::handleMouseMove(const JsonObject& json) {
    onMain([&poster = platform_.eventPoster, dx = numberOrZero(json, "dx"),
            dy = numberOrZero(json, "dy")](HistoryStore*) { moveMouse(poster, dx, dy); });
}

void WebSocketServer::handleMouseClick(const JsonObject& json) {
    onMain([&poster = platform_.eventPoster, isRight = json.utf8("button") == "right"](HistoryStore*) {
        clickMouse(poster, isRight);
    });
}

void WebSocketServer::pressMediaKey(std::string_view command) {
    if (!platform_.accessibilityTrust.isProcessTrusted(false)) {
        platform_.log.line("[WebSocketServer] Error: Media keys require Accessibility permissions.");
        return;
    }
    if (const auto key = mediaKeyOf(command)) {
        sendSystemMediaKey(*key);
    }
}

void WebSocketServer::performCommand(std::string_view command, const JsonObject& json) {
    const auto split = splitCommand(command);
    const auto* row = remoteCommandOf(split.name);
    if (row == nullptr || (row->needsAccess && !checkAccess(command))) {
        return;
    }
    struct Performer {
        WebSocketServer& server;
        const std::vector<std::string_view>& modifiers;
        const JsonObject& json;

        void operator()(const PressKey& press) const { server.sendCGKey(press.keyCode, modifiers); }
        void operator()(const PressSystemKey& press) const { server.sendSystemMediaKey(press.key); }
        void operator()(const PerformScript& script) const { server.runScript(script.source.toString()); }
        void operator()(const OpenUrl& /*open*/) const {
            if (const auto url = json.string("url")) {
                server.runScript(openLocationScript(*url));
            }
        }
    };
    std::visit(Performer{*this, split.modifiers, json}, row->action);
}

bool WebSocketServer::checkAccess(std::string_view command) {
    if (platform_.accessibilityTrust.isProcessTrusted(false)) {
        return true;
    }
    platform_.log.line("[WebSocketServer] Error: Command '" + bytesOf(command) +
                       "' failed. Accessibility permissions are missing.");
    return false;
}

void WebSocketServer::runScript(QString source) {
    onMain(
        [&runner = platform_.scriptRunner, &log = platform_.log, source = std::move(source)](HistoryStore*) {
            runner.execute(source, [&log](const std::optional<QString>& error) {
                if (error) {
                    log.line("[WebSocketServer] AppleScript Error: " + error->toUtf8());
                }
            });
        });
}

} // namespace brenvale
