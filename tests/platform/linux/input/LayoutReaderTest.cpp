#include "platform/linux/input/LayoutReader.h"

#include "../wayland/TestCompositor.h"
#include "TestKeymap.h"

#include "fakes/EventLoop.h"

#include <gmock/gmock.h>

#include <sys/mman.h>
#include <unistd.h>

using namespace brenvale;
using namespace std::chrono_literals;
using testing::Contains;
using testing::IsEmpty;
using testing::Not;

namespace {

constexpr quint32 ue = 0xfc;
constexpr quint32 cyrillicA = 0x6c1;

/// The compositor's seat, with one keyboard.
class TestSeat {
public:
    explicit TestSeat(wl_display* display) {
        wl_global_create(display, &wl_seat_interface, 1, this,
                         [](wl_client* client, void* data, auto, auto id) {
                             auto* seat = wl_resource_create(client, &wl_seat_interface, 1, id);
                             wl_resource_set_implementation(seat, &requests, data, nullptr);
                             wl_seat_send_capabilities(seat, WL_SEAT_CAPABILITY_KEYBOARD);
                         });
    }

    [[nodiscard]] bool hasKeyboard() const { return keyboard_ != nullptr; }

    void sendLayouts(const char* layouts) {
        const auto keymap = keymapOf(layouts) + '\0';
        const int file = ::memfd_create("keymap", MFD_CLOEXEC);
        ASSERT_EQ(::write(file, keymap.constData(), static_cast<std::size_t>(keymap.size())), keymap.size());
        wl_keyboard_send_keymap(keyboard_, WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1, file,
                                static_cast<std::uint32_t>(keymap.size()));
        ::close(file);
    }

private:
    static void getKeyboard(wl_client* client, wl_resource* seat, std::uint32_t id) {
        static_cast<TestSeat*>(wl_resource_get_user_data(seat))->keyboard_ =
            wl_resource_create(client, &wl_keyboard_interface, 1, id);
    }

    static constexpr struct wl_seat_interface requests{
        .get_pointer = nullptr, .get_keyboard = getKeyboard, .get_touch = nullptr, .release = nullptr};

    wl_resource* keyboard_ = nullptr;
};

struct LayoutReaderTest : testing::Test, EventLoop {
    template <typename Condition>
    void turnBothUntil(Condition condition) {
        while (!condition()) {
            compositor.step();
            QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
        }
    }

    /// A reader that has read the layout "us".
    std::unique_ptr<LayoutReader> readerAfterUs(std::chrono::milliseconds settlingTime) {
        auto reader = std::make_unique<LayoutReader>(settlingTime);
        turnBothUntil([this] { return seat.hasKeyboard(); });
        seat.sendLayouts("us");
        turnBothUntil([&reader] { return reader->keysyms().contains('a'); });
        return reader;
    }

    TestCompositor compositor;
    TestSeat seat{compositor.display()};
};

} // namespace

TEST_F(LayoutReaderTest, KnowsNothingBeforeTheFirstLayoutAndAllOfItThen) {
    EXPECT_THAT(LayoutReader().keysyms(), IsEmpty());
    const auto reader = readerAfterUs(LayoutReader::usualSettlingTime);
    EXPECT_THAT(reader->keysyms(), Not(Contains(ue)));
}

TEST_F(LayoutReaderTest, FollowsAChange) {
    const auto reader = readerAfterUs(0ms);
    seat.sendLayouts("de");
    turnBothUntil([&reader] { return reader->keysyms().contains(ue); });
    seat.sendLayouts("de,ru");
    turnBothUntil([&reader] { return !reader->keysyms().contains(ue); });
    EXPECT_THAT(reader->keysyms(), Not(Contains(cyrillicA))) << "the first layout has none";
}

TEST_F(LayoutReaderTest, ALayoutThatHasJustChangedIsNotReliedOn) {
    const auto reader = readerAfterUs(1h);
    seat.sendLayouts("de");
    turnBothUntil([&reader] { return reader->keysyms().empty(); });
}

TEST_F(LayoutReaderTest, WithoutACompositorNothingIsKnown) {
    qputenv("WAYLAND_DISPLAY", "/nowhere");
    EXPECT_THAT(LayoutReader().keysyms(), IsEmpty());
}
