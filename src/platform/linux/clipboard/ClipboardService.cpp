#include "platform/linux/clipboard/ClipboardService.h"

#include "platform/linux/clipboard/ClipboardLoan.h"
#include "platform/linux/clipboard/DataControl.h"
#include "platform/linux/clipboard/SelectionReading.h"
#include "platform/linux/clipboard/X11Selections.h"

#include <chrono>
#include <future>
#include <utility>
#include <vector>

namespace brenvale {

namespace {

constexpr std::chrono::seconds patienceForManager{4};

} // namespace

/// What lives on the thread. Steps wait until it is known which way the session has.
class ClipboardService::Worker {
public:
    /// Gets null where the session has no way.
    using Step = std::move_only_function<void(Worker*)>;

    Worker(DispatchQueue& queue, Session session) : queue_(queue) {
        if (session == Session::wayland) {
            access_ = std::make_unique<DataControl>([this](bool isUsable) { decided(isUsable); });
        } else {
            openX11(session);
        }
    }

    void run(Step step) {
        if (!isDecided_) {
            waiting_.push_back(std::move(step));
        } else {
            step(loan_ ? this : nullptr);
        }
    }

    [[nodiscard]] SelectionAccess& access() { return *access_; }
    [[nodiscard]] ClipboardLoan& loan() { return *loan_; }

private:
    void decided(bool isUsable) {
        if (isUsable) {
            begin();
        } else { // not from within the call of what goes
            queue_.async([this] { openX11(Session::x11); });
        }
    }

    /// Where a compositor has no data control, as GNOME's, its X server takes and gives the selections too.
    void openX11(Session session) {
        access_ = session == Session::none ? nullptr : X11Selections::open();
        begin();
    }

    void begin() {
        isDecided_ = true;
        if (access_) {
            loan_ = std::make_unique<ClipboardLoan>(*access_);
        }
        for (auto& step : std::exchange(waiting_, {})) {
            step(loan_ ? this : nullptr);
        }
    }

    DispatchQueue& queue_;
    bool isDecided_ = false;
    std::vector<Step> waiting_;
    std::unique_ptr<SelectionAccess> access_;
    std::unique_ptr<ClipboardLoan> loan_; ///< null where the session has no way
};

ClipboardService::ClipboardService(DispatchQueue& main, Session session) : main_(main) {
    thread_.setObjectName(QStringLiteral("clipboard"));
    queue_.moveToThread(&thread_);
    thread_.start();
    queue_.async([this, session] { worker_ = std::make_unique<Worker>(queue_, session); });
}

ClipboardService::~ClipboardService() {
    queue_.async([this] {
        worker_.reset();
        thread_.quit();
    });
    thread_.wait();
}

void ClipboardService::own(Selection selection, ClipboardContents contents,
                           std::move_only_function<void()> refused) {
    queue_.async([this, selection, contents = std::move(contents), refused = std::move(refused)]() mutable {
        worker_->run([this, selection, contents = std::move(contents),
                      refused = std::move(refused)](Worker* worker) mutable {
            if (worker == nullptr) {
                main_.async(std::move(refused));
                return;
            }
            if (!worker->loan().holdBack(selection, contents)) {
                worker->access().own(selection, std::move(contents));
            }
        });
    });
}

void ClipboardService::readText(Selection selection, Text answer,
                                std::move_only_function<void(Text)> refused) {
    queue_.async([this, selection, answer = std::move(answer), refused = std::move(refused)]() mutable {
        worker_->run([this, selection, answer = std::move(answer),
                      refused = std::move(refused)](Worker* worker) mutable {
            if (worker == nullptr) {
                main_.async([answer = std::move(answer), refused = std::move(refused)]() mutable {
                    refused(std::move(answer));
                });
                return;
            }
            brenvale::readText(worker->access(), selection,
                               [this, answer = std::move(answer)](std::optional<QString> text) mutable {
                                   main_.async(
                                       [answer = std::move(answer), text = std::move(text)]() mutable {
                                           answer(std::move(text));
                                       });
                               });
        });
    });
}

void ClipboardService::lend(const QString& text, std::move_only_function<void(bool)> lent) {
    queue_.async([this, text, lent = std::move(lent)]() mutable {
        worker_->run([this, text, lent = std::move(lent)](Worker* worker) mutable {
            auto answer = [this, lent = std::move(lent)](bool isLent) mutable {
                main_.async([lent = std::move(lent), isLent]() mutable { lent(isLent); });
            };
            if (worker == nullptr || worker->loan().hasEnded()) {
                answer(false);
                return;
            }
            worker->loan().lend(text, [answer = std::move(answer)]() mutable { answer(true); });
        });
    });
}

void ClipboardService::giveBack() {
    queue_.async([this] {
        worker_->run([](Worker* worker) {
            if (worker != nullptr) {
                worker->loan().giveBack();
            }
        });
    });
}

void ClipboardService::saveBeforeEnd() {
    auto saved = std::make_shared<std::promise<void>>();
    auto end = saved->get_future();
    queue_.async([this, saved] {
        worker_->run([saved](Worker* worker) {
            if (worker == nullptr) {
                saved->set_value();
                return;
            }
            worker->loan().end(); // what is typed, a password perhaps, is nothing to keep
            worker->access().saveBeforeEnd([saved] { saved->set_value(); });
        });
    });
    end.wait_for(patienceForManager);
}

} // namespace brenvale
