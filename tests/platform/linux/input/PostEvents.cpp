// Posts events to the X server, for tests of what arrives. A command a line on standard input: "text
// JSON-STRING", "key NUMBER FLAGS", "press NUMBER FLAGS", "release NUMBER FLAGS", "system NUMBER", "move X
// Y", "click left|right". "say WORD" prints the word once nothing before it waits to be posted; "stay" goes
// on until it is killed. Ends with its input.
#include "platform/linux/input/X11EventPoster.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QStringList>

#include <chrono>
#include <iostream>
#include <string>
#include <thread>

#include <unistd.h>

using namespace brenvale;

namespace {

void postKey(EventPoster& poster, quint16 number, quint64 flags, bool isDown) {
    poster.post(KeyEvent{.keyCode = number, .flags = flags, .isDown = isDown});
}

void postSystemKey(EventPoster& poster, qint64 number) {
    for (const qint64 word : {0xa00, 0xb00}) {
        poster.post(SystemDefinedEvent{
            .flags = static_cast<quint64>(word), .subtype = 8, .data1 = number << 16 | word, .data2 = -1});
    }
}

void click(EventPoster& poster, bool isRight) {
    using enum MouseEvent::Type;
    const auto place = poster.pointerLocation();
    const quint8 button = isRight ? 1 : 0;
    poster.post(MouseEvent{.type = isRight ? rightDown : leftDown, .position = place, .button = button});
    poster.post(MouseEvent{.type = isRight ? rightUp : leftUp, .position = place, .button = button});
}

QString textOf(const QString& json) {
    return QJsonDocument::fromJson((u'[' + json + u']').toUtf8()).array().at(0).toString();
}

void perform(EventPoster& poster, const QString& line) {
    const auto word = line.section(u' ', 0, 0);
    const auto words = line.split(u' ') + QStringList{QString(), QString()};
    if (word == u"text") {
        poster.post(KeyEvent{.isDown = true, .text = textOf(line.section(u' ', 1))});
        poster.post(KeyEvent{});
    } else if (word == u"key") {
        postKey(poster, words[1].toUShort(), words[2].toULongLong(), true);
        postKey(poster, words[1].toUShort(), words[2].toULongLong(), false);
    } else if (word == u"press" || word == u"release") {
        postKey(poster, words[1].toUShort(), words[2].toULongLong(), word == u"press");
    } else if (word == u"system") {
        postSystemKey(poster, words[1].toLongLong());
    } else if (word == u"move") {
        poster.post(MouseEvent{.type = MouseEvent::Type::moved,
                               .position = poster.pointerLocation() +
                                           QPointF(words[1].toDouble(), words[2].toDouble())});
    } else if (word == u"click") {
        click(poster, words[1] == u"right");
    } else if (word == u"say") {
        std::cout << words[1].toStdString() << std::endl; // NOLINT: whoever reads waits for it
    } else if (word == u"stay") {
        ::pause(); // until it is killed
    }
}

} // namespace

int main() {
    X11EventPoster poster;
    for (int tries = 0; !poster.canMakeEvents() && tries < 1000; ++tries) {
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    std::cout << (poster.canMakeEvents() ? "ready" : "impossible") << std::endl; // NOLINT
    for (std::string line; std::getline(std::cin, line);) {
        if (line == "can") {
            std::cout << (poster.canMakeEvents() ? "yes" : "no") << std::endl; // NOLINT
        } else {
            perform(poster, QString::fromStdString(line));
        }
    }
    return 0;
}
