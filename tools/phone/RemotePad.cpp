#include "RemotePad.h"

#include <algorithm>
#include <array>
#include <utility>

namespace brenvale::phone {

namespace {

constexpr char controlC = 0x03;
constexpr char controlD = 0x04;
constexpr char backspace = 0x08;
constexpr char tab = 0x09;
constexpr char escape = 0x1b;
constexpr char deleteByte = 0x7f;

// What the numbers in a terminal's sequence hold down.
constexpr int shift = 1;
constexpr int option = 2;
constexpr int control = 4;
constexpr int command = 8;

constexpr qsizetype longestSequence = 32;

struct Arrow {
    char end;
    const char* name;
    int dx;
    int dy;
};
constexpr std::array arrows{Arrow{'A', "key_up", 0, -1}, Arrow{'B', "key_down", 0, 1},
                            Arrow{'C', "key_right", 1, 0}, Arrow{'D', "key_left", -1, 0}};

/// A key whose sequence is a number and '~', or a letter behind "O" for the first four of the upper row.
struct SpecialKey {
    int number;
    const char* command;
    const char* type;
};
constexpr std::array specialKeys{
    SpecialKey{11, "play_pause", "media"},
    SpecialKey{12, "prev", "media"},
    SpecialKey{13, "next", "media"},
    SpecialKey{14, "mute_mac", nullptr},
    SpecialKey{15, "vol_down", nullptr},
    SpecialKey{17, "vol_up", nullptr},
    SpecialKey{18, "screen_brightness_down", nullptr},
    SpecialKey{19, "screen_brightness_up", nullptr},
    SpecialKey{20, "brightness_down", nullptr},
    SpecialKey{21, "brightness_up", nullptr},
    SpecialKey{5, "slide_prev", nullptr},
    SpecialKey{6, "slide_next", nullptr},
};

RemoteCommand plain(const QString& word) {
    return {.command = word};
}

bool isControl(char byte) {
    return static_cast<unsigned char>(byte) < 0x20 || byte == deleteByte;
}

/// The bytes of the character that begins with `first`.
qsizetype lengthOf(char first) {
    const auto byte = static_cast<unsigned char>(first);
    if (byte < 0xc0) {
        return 1;
    }
    if (byte < 0xe0) {
        return 2;
    }
    return byte < 0xf0 ? 3 : 4;
}

/// How many pixels an arrow moves the pointer.
double stepWith(int modifiers) {
    if ((modifiers & shift) != 0) {
        return 1;
    }
    return (modifiers & control) != 0 ? 100 : 10;
}

QString prefixOf(int modifiers) {
    QStringList names;
    if ((modifiers & command) != 0) {
        names << QStringLiteral("cmd");
    }
    if ((modifiers & control) != 0) {
        names << QStringLiteral("ctrl");
    }
    if ((modifiers & option) != 0) {
        names << QStringLiteral("option");
    }
    if ((modifiers & shift) != 0) {
        names << QStringLiteral("shift");
    }
    return names.isEmpty() ? QString() : names.join(QLatin1Char('+')) + QLatin1Char('_');
}

} // namespace

QList<RemoteCommand> RemotePad::take(QByteArrayView bytes) {
    unread_.append(bytes);
    while (!isOver_ && !unread_.isEmpty() && takeOne()) {
    }
    return std::exchange(commands_, {});
}

QList<RemoteCommand> RemotePad::takePause() {
    if (unread_.startsWith(escape)) {
        unread_.remove(0, 1);
        commands_ << plain(QStringLiteral("key_escape"));
    } else {
        unread_.clear(); // half a character
    }
    return take({});
}

/// False where more bytes have to come.
bool RemotePad::takeOne() {
    const char first = unread_.front();
    if (first == escape) {
        return takeSequence();
    }
    if (!isControl(first) && mode_ == Mode::keyboard) {
        return takeText();
    }
    unread_.remove(0, 1);
    if (isControl(first)) {
        takeControl(first);
    } else {
        mouseKey(first);
    }
    return true;
}

bool RemotePad::takeSequence() {
    if (unread_.size() < 2) {
        return false;
    }
    const char introducer = unread_.at(1);
    if (introducer != '[' && introducer != 'O') {
        unread_.remove(0, 1);
        commands_ << plain(QStringLiteral("key_escape"));
        return true;
    }
    const auto* const end = std::find_if(unread_.cbegin() + 2, unread_.cend(),
                                         [](char byte) { return byte >= '@' || byte < ' '; });
    if (end == unread_.cend()) {
        if (unread_.size() > longestSequence) {
            unread_.clear(); // nothing that a terminal sends
        }
        return false;
    }
    const auto length = end - unread_.cbegin() + 1;
    const auto sequence = unread_.first(length);
    unread_.remove(0, length);
    if (introducer == 'O' && sequence.back() >= 'P' && sequence.back() <= 'S') {
        finishSequence(QByteArray::number(11 + sequence.back() - 'P'), '~');
    } else {
        finishSequence(QByteArrayView(sequence).sliced(2, length - 3), sequence.back());
    }
    return true;
}

/// A run of characters is one text, as a paste is.
bool RemotePad::takeText() {
    qsizetype length = 0;
    while (length < unread_.size() && !isControl(unread_.at(length))) {
        const auto next = length + lengthOf(unread_.at(length));
        if (next > unread_.size()) {
            break;
        }
        length = next;
    }
    if (length == 0) {
        return false;
    }
    commands_ << RemoteCommand{.command = QStringLiteral("type"),
                               .type = QStringLiteral("keyboard_text"),
                               .text = QString::fromUtf8(unread_.first(length))};
    unread_.remove(0, length);
    return true;
}

void RemotePad::takeControl(char byte) {
    switch (byte) {
    case controlC:
    case controlD:
        isOver_ = true;
        break;
    case tab:
        mode_ = mode_ == Mode::keyboard ? Mode::mouse : Mode::keyboard;
        break;
    case '\r':
    case '\n':
        if (mode_ == Mode::mouse) {
            click(QStringLiteral("left"));
        } else {
            commands_ << plain(QStringLiteral("key_return"));
        }
        break;
    case backspace:
    case deleteByte:
        commands_ << plain(QStringLiteral("key_delete"));
        break;
    default:
        break;
    }
}

void RemotePad::finishSequence(QByteArrayView parameters, char end) {
    const auto separator = parameters.indexOf(';');
    const int number = parameters.first(separator < 0 ? parameters.size() : separator).toInt();
    const int modifiers = separator < 0 ? 0 : std::max(parameters.sliced(separator + 1).toInt() - 1, 0);
    if (end == '~') {
        const auto* key = std::ranges::find(specialKeys, number, &SpecialKey::number);
        if (key != specialKeys.end()) {
            const bool isSlide = number == 5 || number == 6;
            RemoteCommand special{.command = (isSlide ? prefixOf(modifiers) : QString()) +
                                             QString::fromLatin1(key->command)};
            if (key->type != nullptr) {
                special.type = QString::fromLatin1(key->type);
            }
            commands_ << special;
        }
        return;
    }
    const auto* key = std::ranges::find(arrows, end, &Arrow::end);
    if (key == arrows.end()) {
        return;
    }
    if (mode_ == Mode::keyboard) {
        commands_ << plain(prefixOf(modifiers) + QString::fromLatin1(key->name));
        return;
    }
    const double step = stepWith(modifiers);
    commands_ << RemoteCommand{.command = QStringLiteral("move"),
                               .type = QStringLiteral("mouse_move"),
                               .dx = step * key->dx,
                               .dy = step * key->dy};
}

void RemotePad::mouseKey(char byte) {
    if (byte == ' ') {
        click(QStringLiteral("left"));
    } else if (byte == 'r') {
        click(QStringLiteral("right"));
    }
}

void RemotePad::click(const QString& button) {
    commands_ << RemoteCommand{
        .command = QStringLiteral("click"), .type = QStringLiteral("mouse_click"), .button = button};
}

QString RemotePad::help() {
    return QStringLiteral("Keys go to the desktop now:\n"
                          "  text, arrows (also with Shift, Alt, Ctrl), Return, Backspace, Escape\n"
                          "  PgUp, PgDn      previous and next slide\n"
                          "  F1 F2 F3 F4     play or pause, previous, next, mute\n"
                          "  F5 F6           volume down and up\n"
                          "  F7 F8, F9 F10   light of the display, of the keyboard\n"
                          "  Tab             to the mouse and back: arrows move (Shift by 1, Ctrl by 100),\n"
                          "                  Space clicks, r clicks right\n"
                          "  Ctrl-D          ends this");
}

} // namespace brenvale::phone
