// Measures the remote control of the real program on this X display, and prints one table: from the phone's
// frame to the event that a program with the keyboard gets. Usage: remote-bench PROGRAM [--smoke], for
// example: tests/desktop/testdesk remote-bench build/release/bin/brenvale

#include "Measuring.h"
#include "Phone.h"
#include "PhoneMessages.h"
#include "StartedProgram.h"
#include "Table.h"

#include <QApplication>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTimer>

#include <xcb/xcb.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

#include <poll.h>

using namespace brenvale;
using namespace brenvale::bench;
using namespace std::chrono_literals;

namespace {

struct Freeing {
    void operator()(void* memory) const { std::free(memory); }
};
using Event = std::unique_ptr<xcb_generic_event_t, Freeing>;

QByteArray commandMessage(const QString& command) {
    return phone::remoteControlMessage({.command = command});
}

QByteArray moveMessage(double dx, double dy) {
    return phone::remoteControlMessage(
        {.command = QStringLiteral("m"), .type = QStringLiteral("mouse_move"), .dx = dx, .dy = dy});
}

/// A window over the whole screen that has the keyboard.
class Observer {
public:
    Observer() : connection_(xcb_connect(nullptr, nullptr)) {
        if (xcb_connection_has_error(connection_) != 0) {
            std::fputs("there is no X display\n", stderr);
            std::exit(1);
        }
        const auto* screen = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
        root_ = screen->root;
        width_ = static_cast<qint16>(screen->width_in_pixels);
        window_ = xcb_generate_id(connection_);
        const quint32 values[] = {screen->black_pixel, 1,
                                  XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_POINTER_MOTION |
                                      XCB_EVENT_MASK_EXPOSURE};
        xcb_create_window(connection_, XCB_COPY_FROM_PARENT, window_, root_, 0, 0, screen->width_in_pixels,
                          screen->height_in_pixels, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, screen->root_visual,
                          XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values);
        xcb_map_window(connection_, window_);
        xcb_flush(connection_);
        (void)next(XCB_EXPOSE, 5s);
        takeKeyboard();
        placePointer();
    }
    ~Observer() { xcb_disconnect(connection_); }
    Observer(const Observer&) = delete;
    Observer& operator=(const Observer&) = delete;

    /// A window manager that has just come up may have it.
    void takeKeyboard() {
        xcb_set_input_focus(connection_, XCB_INPUT_FOCUS_NONE, window_, XCB_CURRENT_TIME);
        std::free(xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
    }

    /// The next event of a kind, or nothing in that time.
    [[nodiscard]] Event next(quint8 type, std::chrono::milliseconds time) {
        const auto end = Clock::now() + time;
        for (;;) {
            while (auto* event = xcb_poll_for_event(connection_)) {
                Event owned(event);
                if ((owned->response_type & 0x7f) == type) {
                    return owned;
                }
            }
            const auto rest = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now());
            pollfd socket{.fd = xcb_get_file_descriptor(connection_), .events = POLLIN, .revents = 0};
            if (rest <= 0ms || ::poll(&socket, 1, static_cast<int>(rest.count())) <= 0) {
                return {};
            }
        }
    }

    /// The pointer where it has room, and nothing left to be read of its way there.
    void placePointer() {
        xcb_warp_pointer(connection_, XCB_NONE, root_, 0, 0, 0, 0, start, start);
        std::free(xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
        while (next(XCB_MOTION_NOTIFY, 100ms)) {
        }
    }

    /// What the screen shows at the middle of the upper edge of a call's panel: the panel, or this window.
    [[nodiscard]] QByteArray panelPixel() const {
        constexpr qint16 fromRight = 20 + (350 / 2);
        constexpr qint16 fromTop = 20 + 6;
        const auto cookie = xcb_get_image(connection_, XCB_IMAGE_FORMAT_Z_PIXMAP, root_,
                                          static_cast<qint16>(width_ - fromRight), fromTop, 1, 1, ~0U);
        const std::unique_ptr<xcb_get_image_reply_t, Freeing> image(
            xcb_get_image_reply(connection_, cookie, nullptr));
        return image ? QByteArray(reinterpret_cast<const char*>(xcb_get_image_data(image.get())),
                                  xcb_get_image_data_length(image.get()))
                     : QByteArray();
    }

    /// Whether the screen comes to show a panel, or comes to show none, within 5 seconds.
    [[nodiscard]] bool waitForPanel(bool isThere, const QByteArray& without) const {
        const auto end = Clock::now() + 5s;
        while ((panelPixel() != without) != isThere) {
            if (Clock::now() > end) {
                return false;
            }
            std::this_thread::sleep_for(200us);
        }
        return true;
    }

    static constexpr qint16 start = 300;

private:
    xcb_connection_t* connection_;
    xcb_window_t root_ = XCB_NONE;
    qint16 width_ = 0;
    xcb_window_t window_ = XCB_NONE;
};

/// False where one was lost.
bool measureDelay(const Table& table, Phone& phone, Observer& observer, const char* what, quint8 eventType,
                  const std::vector<QByteArray>& messages, int count) {
    std::vector<double> delays;
    int lost = 0;
    constexpr int tooManyLost = 10;
    for (int i = 0; i < count && lost < tooManyLost; ++i) {
        const auto start = Clock::now();
        phone.sendText(messages[static_cast<std::size_t>(i) % messages.size()]);
        if (observer.next(eventType, 2s)) {
            delays.push_back(1e3 * secondsSince(start));
        } else {
            ++lost;
            observer.takeKeyboard();
        }
        std::this_thread::sleep_for(1ms); // as a person's, each meets a program at rest
    }
    const auto delay = distributionOf(delays);
    table.heading(what);
    table.row("from the frame to the event, median (aim: < 0.2)", delay.median, "ms");
    table.row("   99th percentile", delay.percentile99, "ms");
    table.row("   lost", lost, "");
    return lost == 0;
}

/// From the frame that rings to the panel on the screen, painted; false where none came or one stayed.
bool measureRinging(const Table& table, Phone& phone, const Observer& observer, int count) {
    const auto ringing = phone::callMessage({.action = QStringLiteral("incoming_call"),
                                             .state = QStringLiteral("RINGING"),
                                             .number = QStringLiteral("17")});
    const auto idle = phone::callMessage({.state = QStringLiteral("IDLE")});
    const auto without = observer.panelPixel();
    std::vector<double> delays;
    for (int i = 0; i <= count; ++i) {
        const auto start = Clock::now();
        phone.sendText(ringing);
        if (!observer.waitForPanel(true, without)) {
            return false;
        }
        delays.push_back(1e3 * secondsSince(start));
        phone.sendText(idle);
        if (!observer.waitForPanel(false, without)) {
            return false;
        }
    }
    table.heading("A call that rings, until its panel is on the screen");
    table.row("the first of all (aim: < 50)", delays.front(), "ms");
    delays.erase(delays.begin());
    const auto later = distributionOf(delays);
    table.row("later ones, median", later.median, "ms");
    table.row("   99th percentile", later.percentile99, "ms");
    return true;
}

/// Asks the link for a sign of life, over and over, from a phone of its own.
class Pinging {
public:
    Pinging() {
        phone_.onPong([this](const QByteArray&) {
            const std::scoped_lock lock(mutex_);
            isAnswered_ = true;
            changed_.notify_all();
        });
        if (!phone_.connect(QStringLiteral("127.0.0.1"), programPort())) {
            std::fputs("the program does not answer\n", stderr);
        }
        thread_ = std::jthread([this](const std::stop_token& stop) {
            while (!stop.stop_requested()) {
                ping();
                std::this_thread::sleep_for(10ms);
            }
        });
    }

    [[nodiscard]] Distribution waits() {
        thread_.request_stop();
        thread_.join();
        return distributionOf(waits_);
    }

private:
    void ping() {
        const auto start = Clock::now();
        std::unique_lock lock(mutex_);
        isAnswered_ = false;
        phone_.ping("?");
        changed_.wait_for(lock, 5s, [this] { return isAnswered_; });
        waits_.push_back(1e3 * secondsSince(start));
    }

    Phone phone_;
    std::mutex mutex_;
    std::condition_variable changed_;
    bool isAnswered_ = false;
    std::vector<double> waits_;
    std::jthread thread_; ///< ends before what it uses
};

/// A path through the screen, a pixel a move: right for 200 moves, then left.
int expectedX(int move) {
    const int place = move % 400;
    return Observer::start + (place <= 200 ? place : 400 - place);
}

/// False where a move was lost or led elsewhere.
bool measureStream(const Table& table, Phone& phone, Observer& observer, int seconds) {
    constexpr int aSecond = 1000;
    const int count = aSecond * seconds;
    observer.placePointer();
    Pinging pinging;
    const auto start = Clock::now();
    const std::jthread sender([&phone, start, count] {
        for (int i = 1; i <= count; ++i) {
            std::this_thread::sleep_until(start + i * 1ms);
            phone.sendText(moveMessage(expectedX(i) - expectedX(i - 1), 0));
        }
    });
    int arrived = 0;
    int inOrder = 0;
    while (arrived < count) {
        const auto event = observer.next(XCB_MOTION_NOTIFY, 2s);
        if (!event) {
            break;
        }
        const auto* motion = reinterpret_cast<const xcb_motion_notify_event_t*>(event.get());
        ++arrived;
        inOrder += motion->root_x == expectedX(arrived) && motion->root_y == Observer::start ? 1 : 0;
    }
    const double lasted = secondsSince(start);
    const auto waits = pinging.waits();
    table.heading("1,000 moves of the pointer a second");
    table.row("sent", count, "moves");
    table.row("arrived", arrived, "moves");
    table.row("   each where it should be, in order", inOrder, "moves");
    table.row("   all there after", lasted, "s");
    table.row("another phone's ping meanwhile, median", waits.median, "ms");
    table.row("   99th percentile", waits.percentile99, "ms");
    return arrived == count && inOrder == count;
}

/// Latin with accents, Greek, Cyrillic, Arabic, Hebrew, CJK and emoji, a line long.
QString mixedText(qsizetype length) {
    const auto pattern = QStringLiteral(
        "The quick Fuchs jagt über Ängste, naïve Éclairs; Ελλάδα, привет, مرحبا, שלום, 漢字かな, 👍 ");
    auto text = pattern.repeated((length / pattern.size()) + 1).first(length);
    if (text.back().isHighSurrogate()) {
        text.chop(1);
    }
    return text;
}

/// Types into a real entry; false where it does not come to hold the text.
bool measureText(const Table& table, Phone& phone, const QString& text) {
    QLineEdit entry;
    entry.setMaxLength(1'000'000);
    entry.resize(600, 60);
    entry.show();
    entry.activateWindow();
    entry.setFocus();
    std::optional<Clock::time_point> start;
    QTimer starting;
    QObject::connect(&starting, &QTimer::timeout, [&] {
        if (!start && entry.hasFocus()) {
            start = Clock::now();
            phone.sendText(phone::remoteControlMessage(
                {.command = QStringLiteral("t"), .type = QStringLiteral("keyboard_text"), .text = text}));
        }
    });
    starting.start(50);
    QObject::connect(&entry, &QLineEdit::textChanged, [&](const QString& now) {
        if (now.size() >= text.size()) {
            QCoreApplication::quit();
        }
    });
    QTimer::singleShot(30s, &entry, [] { QCoreApplication::quit(); });
    QCoreApplication::exec();
    const double lasted = start ? secondsSince(*start) : 0;
    table.heading("Mixed text into an entry");
    table.row("characters", static_cast<double>(text.size()), "UTF-16");
    table.row("   until they are all there", 1e3 * lasted, "ms");
    table.row("   the same, one by one (1: yes)", entry.text() == text ? 1 : 0, "");
    return entry.text() == text;
}

/// False where something was lost or did not arrive as it was.
bool measureProgram(bool isSmoke) {
    Phone phone;
    if (!phone.connect(QStringLiteral("127.0.0.1"), programPort())) {
        std::fputs("the program does not answer\n", stderr);
        return false;
    }
    const Table table(stdout);
    const int count = isSmoke ? 50 : 2000;
    bool isWhole = true;
    {
        Observer observer;
        isWhole = measureDelay(table, phone, observer, "A key", XCB_KEY_PRESS,
                               {commandMessage(QStringLiteral("key_left"))}, count);
        isWhole &= measureDelay(table, phone, observer, "A move of the pointer", XCB_MOTION_NOTIFY,
                                {moveMessage(3, 0), moveMessage(-3, 0)}, count);
        isWhole &= measureRinging(table, phone, observer, isSmoke ? 3 : 50);
        isWhole &= measureStream(table, phone, observer, isSmoke ? 1 : 10);
    }
    isWhole &= measureText(table, phone, mixedText(isSmoke ? 200 : 2000));
    phone.close();
    return isWhole;
}

} // namespace

int main(int argc, char* argv[]) {
    if (argc < 2) {
        std::fputs("usage: remote-bench PROGRAM [--smoke]\n", stderr);
        return 2;
    }
    const bool isSmoke = argc > 2 && std::strcmp(argv[2], "--smoke") == 0;
    qputenv("QT_QPA_PLATFORM", "xcb");
    qputenv("QT_IM_MODULE", "none");
    const QApplication application(argc, argv);
    const QTemporaryDir folder;
    writeSettings(folder.path());
    const auto program = startProgram(argv[1]);
    waitUntilListening(program);
    const bool isWhole = measureProgram(isSmoke);
    stopProgram(program);
    return isWhole ? 0 : 1;
}
