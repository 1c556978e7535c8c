#pragma once

#include "platform/linux/clipboard/PipeTransfers.h"
#include "platform/linux/clipboard/SelectionAccess.h"
#include "platform/linux/wayland/WaylandNotifier.h"

#include <list>
#include <memory>

struct ext_data_control_offer_v1;

namespace brenvale {

/// The selections of a Wayland compositor by its data control (`ext_data_control_v1`, else
/// `zwlr_data_control_v1`), which needs no focus. A compositor that ends the connection is tried again. On
/// the clipboard's thread.
class DataControl final : public QObject, public SelectionAccess {
public:
    /// `decided` is called once, from the event loop: whether there is a compositor that has it.
    explicit DataControl(std::move_only_function<void(bool)> decided);
    ~DataControl() override;
    DataControl(const DataControl&) = delete;
    DataControl& operator=(const DataControl&) = delete;

    void own(Selection selection, ClipboardContents contents) override;
    [[nodiscard]] const ClipboardContents* owned(Selection selection) const override;
    void readFormats(Selection selection, Formats answer) override;
    void read(Selection selection, const QByteArray& format, Bytes answer) override;
    void settle(std::move_only_function<void()> answer) override;

private:
    struct Listeners;
    struct Offer;
    struct Session;
    struct Source;

    void open();
    void openAgain();
    void bindManager();
    void bindDevice();
    void decide(bool isUsable);
    void select(Selection selection, ext_data_control_offer_v1* offer);
    void send(const Source& source, const QByteArray& format, int descriptor);
    void close();

    std::move_only_function<void(bool)> decided_;
    std::unique_ptr<WaylandNotifier> wayland_;
    std::unique_ptr<Session> session_; ///< what stands on the connection; goes before it does
    std::list<std::move_only_function<void()>> settling_;
    std::list<std::unique_ptr<PipeReader>> readers_;
    std::list<std::unique_ptr<PipeWriter>> writers_;
    QTimer again_;
    std::chrono::seconds pause_{1};
};

} // namespace brenvale
