#include "platform/linux/clipboard/DataControl.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include <ext-data-control-v1-client-protocol.h>
#include <fcntl.h>
#include <unistd.h>

namespace brenvale {

namespace {

constexpr std::chrono::seconds longestPause{30};
constexpr qsizetype mostFormats = 256;
constexpr std::size_t mostTransfers = 64;

/// The older protocol has the same messages under another name, so it takes the code of the newer one.
const wl_interface& olderManager() {
    static const auto interface = [] {
        auto renamed = ext_data_control_manager_v1_interface;
        renamed.name = "zwlr_data_control_manager_v1";
        renamed.version = 2;
        return renamed;
    }();
    return interface;
}

/// Takes `transfer` off its list, not before the call that it stands in is over.
template <typename Transfers>
void dropLater(QObject& owner, Transfers& transfers, typename Transfers::value_type::pointer transfer) {
    QTimer::singleShot(0, &owner, [&transfers, transfer] {
        std::erase_if(transfers, [transfer](const auto& each) { return each.get() == transfer; });
    });
}

} // namespace

/// What another program, or we, have on a selection.
struct DataControl::Offer {
    std::unique_ptr<ext_data_control_offer_v1, WaylandDestroy<ext_data_control_offer_v1_destroy>> handle;
    QByteArrayList formats;
};

/// What we put on a selection.
struct DataControl::Source {
    DataControl* owner = nullptr;
    Selection selection = Selection::clipboard;
    ClipboardContents contents;
    std::unique_ptr<ext_data_control_source_v1, WaylandDestroy<ext_data_control_source_v1_destroy>> handle;
};

/// What stands on one connection.
struct DataControl::Session {
    std::unique_ptr<wl_seat, WaylandDestroy<wl_seat_destroy>> seat;
    std::unique_ptr<ext_data_control_manager_v1, WaylandDestroy<ext_data_control_manager_v1_destroy>> manager;
    std::unique_ptr<ext_data_control_device_v1, WaylandDestroy<ext_data_control_device_v1_destroy>> device;
    bool hasPrimary = false;
    std::vector<std::unique_ptr<Offer>> introduced; ///< not yet said to be of a selection
    std::array<std::unique_ptr<Offer>, 2> offers;
    std::array<std::unique_ptr<Source>, 2> sources;
};

/// What the compositor tells us.
struct DataControl::Listeners {
    static void introduced(void* data, ext_data_control_device_v1* /*device*/,
                           ext_data_control_offer_v1* handle) {
        auto offer = std::make_unique<Offer>();
        offer->handle.reset(handle);
        static constexpr ext_data_control_offer_v1_listener listener{.offer = formatNamed};
        ext_data_control_offer_v1_add_listener(handle, &listener, offer.get());
        static_cast<DataControl*>(data)->session_->introduced.push_back(std::move(offer));
    }

    static void formatNamed(void* data, ext_data_control_offer_v1* /*offer*/, const char* format) {
        auto& formats = static_cast<Offer*>(data)->formats;
        if (formats.size() < mostFormats) {
            formats.append(format);
        }
    }

    static void clipboard(void* data, ext_data_control_device_v1* /*device*/,
                          ext_data_control_offer_v1* offer) {
        static_cast<DataControl*>(data)->select(Selection::clipboard, offer);
    }

    static void primary(void* data, ext_data_control_device_v1* /*device*/,
                        ext_data_control_offer_v1* offer) {
        static_cast<DataControl*>(data)->select(Selection::primary, offer);
    }

    /// The seat has gone; another one may be there.
    static void finished(void* data, ext_data_control_device_v1* /*device*/) {
        auto& self = *static_cast<DataControl*>(data);
        self.session_->device.reset();
        self.session_->introduced.clear();
        self.session_->offers = {};
        self.session_->sources = {};
        self.bindDevice();
    }

    static void send(void* data, ext_data_control_source_v1* /*source*/, const char* format, int descriptor) {
        const auto& source = *static_cast<Source*>(data);
        source.owner->send(source, format, descriptor);
    }

    static void cancelled(void* data, ext_data_control_source_v1* handle) {
        const auto& source = *static_cast<Source*>(data);
        auto& ours = source.owner->session_->sources.at(std::to_underlying(source.selection));
        if (ours && ours->handle.get() == handle) {
            ours.reset();
        }
    }
};

DataControl::DataControl(std::move_only_function<void(bool)> decided)
    : decided_(std::move(decided)), session_(std::make_unique<Session>()) {
    again_.setSingleShot(true);
    connect(&again_, &QTimer::timeout, this, &DataControl::open);
    again_.start(0);
}

DataControl::~DataControl() {
    close();
}

void DataControl::open() {
    auto connection = WaylandConnection::open();
    if (!connection) {
        openAgain();
        return;
    }
    wayland_ = std::make_unique<WaylandNotifier>(std::move(connection));
    wayland_->ready = [this] {
        bindManager();
    };
    wayland_->ended = [this] {
        openAgain();
    };
}

/// The compositor went away, or refused us. It may come back.
void DataControl::openAgain() {
    decide(false);
    again_.start(pause_);
    pause_ = std::min(2 * pause_, longestPause);
    QTimer::singleShot(0, this, [this] { close(); }); // not from within the connection's own call
}

void DataControl::close() {
    session_ = std::make_unique<Session>();
    wayland_.reset();
    for (auto& answer : std::exchange(settling_, {})) {
        answer();
    }
}

void DataControl::decide(bool isUsable) {
    if (auto decided = std::exchange(decided_, {})) {
        decided(isUsable);
    }
}

void DataControl::bindManager() {
    auto& connection = wayland_->connection();
    const auto* newer = &ext_data_control_manager_v1_interface;
    const auto* chosen = connection.find(*newer) != nullptr ? newer : &olderManager();
    session_->manager.reset(static_cast<ext_data_control_manager_v1*>(connection.bind(*chosen, 2)));
    session_->hasPrimary = session_->manager && (chosen == newer || connection.find(*chosen)->version >= 2);
    connection.added = [this](const WaylandGlobal&) {
        bindDevice();
    };
    bindDevice();
    // Behind this the compositor has told what is on the selections.
    connection.sync([this] {
        pause_ = std::chrono::seconds(1);
        decide(session_->device != nullptr);
    });
    wayland_->flush();
}

void DataControl::bindDevice() {
    if (!session_->manager || session_->device) {
        return;
    }
    session_->seat.reset(static_cast<wl_seat*>(wayland_->connection().bind(wl_seat_interface, 1)));
    if (!session_->seat) {
        return;
    }
    static constexpr ext_data_control_device_v1_listener listener{.data_offer = Listeners::introduced,
                                                                  .selection = Listeners::clipboard,
                                                                  .finished = Listeners::finished,
                                                                  .primary_selection = Listeners::primary};
    session_->device.reset(
        ext_data_control_manager_v1_get_data_device(session_->manager.get(), session_->seat.get()));
    ext_data_control_device_v1_add_listener(session_->device.get(), &listener, this);
}

void DataControl::select(Selection selection, ext_data_control_offer_v1* offer) {
    auto& selected = session_->offers.at(std::to_underlying(selection));
    selected.reset();
    const auto place = std::ranges::find_if(
        session_->introduced, [offer](const auto& each) { return each->handle.get() == offer; });
    if (place != session_->introduced.end()) {
        selected = std::move(*place);
        session_->introduced.erase(place);
    }
}

void DataControl::own(Selection selection, ClipboardContents contents) {
    if (!session_->device || (selection == Selection::primary && !session_->hasPrimary)) {
        return;
    }
    auto* const device = session_->device.get();
    std::unique_ptr<Source> source;
    if (!contents.items.empty()) {
        source = std::make_unique<Source>(Source{.owner = this, .selection = selection});
        source->handle.reset(ext_data_control_manager_v1_create_data_source(session_->manager.get()));
        static constexpr ext_data_control_source_v1_listener listener{.send = Listeners::send,
                                                                      .cancelled = Listeners::cancelled};
        ext_data_control_source_v1_add_listener(source->handle.get(), &listener, source.get());
        for (const auto& item : contents.items) {
            ext_data_control_source_v1_offer(source->handle.get(), item.format.constData());
        }
        source->contents = std::move(contents);
    }
    auto* const handle = source ? source->handle.get() : nullptr;
    if (selection == Selection::primary) {
        ext_data_control_device_v1_set_primary_selection(device, handle);
    } else {
        ext_data_control_device_v1_set_selection(device, handle);
    }
    session_->sources.at(std::to_underlying(selection)) = std::move(source);
    wayland_->flush();
}

const ClipboardContents* DataControl::owned(Selection selection) const {
    const auto& source = session_->sources.at(std::to_underlying(selection));
    return source ? &source->contents : nullptr;
}

void DataControl::settle(std::move_only_function<void()> answer) {
    if (!session_->device) {
        answer();
        return;
    }
    settling_.push_back(std::move(answer));
    wayland_->connection().sync([this] {
        auto settled = std::move(settling_.front());
        settling_.pop_front();
        settled();
    });
    wayland_->flush();
}

void DataControl::readFormats(Selection selection, Formats answer) {
    if (const auto* ours = owned(selection)) {
        answer(ours->formats());
        return;
    }
    const auto& offer = session_->offers.at(std::to_underlying(selection));
    answer(offer ? offer->formats : QByteArrayList());
}

void DataControl::read(Selection selection, const QByteArray& format, Bytes answer) {
    if (const auto* ours = owned(selection)) {
        const auto* bytes = ours->find(format);
        answer(bytes != nullptr ? std::optional(*bytes) : std::nullopt);
        return;
    }
    const auto& offer = session_->offers.at(std::to_underlying(selection));
    std::array<int, 2> ends{};
    if (!offer || readers_.size() >= mostTransfers || ::pipe2(ends.data(), O_CLOEXEC) != 0) {
        answer(std::nullopt);
        return;
    }
    {
        const OwnedDescriptor other(ends[1]); // the request has one of its own
        ext_data_control_offer_v1_receive(offer->handle.get(), format.constData(), other.get());
        wayland_->flush();
    }
    auto& reader = readers_.emplace_back();
    auto shared = std::make_shared<Bytes>(std::move(answer));
    reader = std::make_unique<PipeReader>(ends[0], [this, &reader, shared](std::optional<QByteArray> bytes) {
        dropLater(*this, readers_, reader.get());
        (*shared)(std::move(bytes));
    });
}

/// A program pastes: it reads from the descriptor as fast as it likes.
void DataControl::send(const Source& source, const QByteArray& format, int descriptor) {
    const auto* bytes = source.contents.find(format);
    if (bytes == nullptr || writers_.size() >= mostTransfers) {
        const OwnedDescriptor refused(descriptor);
        return;
    }
    auto& writer = writers_.emplace_back();
    writer = std::make_unique<PipeWriter>(descriptor, *bytes,
                                          [this, &writer] { dropLater(*this, writers_, writer.get()); });
}

} // namespace brenvale
