#include "DemoRun.h"

#include <QCoreApplication>
#include <QDateTime>

#include <utility>

namespace brenvale::phone {
namespace {

using namespace std::chrono_literals;

constexpr auto fastSecond = 20ms;

} // namespace

DemoRun::DemoRun(Session& session, PlayDemo options)
    : session_(session),
      options_(std::move(options)),
      phone_(&QDateTime::currentMSecsSinceEpoch),
      script_(demoScript()) {
    session_.onConnected = [this] {
        introduce();
    };
    session_.onMessage = [this](const QJsonObject& message) {
        show(phone_.reactTo(message));
    };
    second_.setInterval(options_.isFast ? fastSecond : 1000ms);
    second_.callOnTimeout([this] {
        show(phone_.secondPassed());
        if (isWaitingForCall_ && !phone_.isCalling()) {
            isWaitingForCall_ = false;
            scheduleNext();
        }
    });
    step_.setSingleShot(true);
    step_.callOnTimeout([this] { playNext(); });
}

void DemoRun::introduce() {
    show(phone_.introduction());
    if (!second_.isActive()) {
        second_.start();
        scheduleNext();
    }
}

void DemoRun::scheduleNext() {
    if (next_ < script_.size()) {
        step_.start(paced(script_.at(next_).pause));
        return;
    }
    if (options_.endsAfter) {
        print(QStringLiteral("The day is over."));
        QCoreApplication::exit(0);
        return;
    }
    print(QStringLiteral("The day is over; the phone stays with the desktop until Ctrl-C."));
}

void DemoRun::playNext() {
    const DemoStep& step = script_.at(next_);
    ++next_;
    show(step.perform(phone_));
    isWaitingForCall_ = step.endsWithCall;
    if (!isWaitingForCall_) {
        scheduleNext();
    }
}

void DemoRun::show(const Reaction& reaction) {
    for (const QString& line : reaction.lines) {
        printDeed(QStringLiteral("Phone"), line);
    }
    for (const QByteArray& message : reaction.messages) {
        session_.send(message);
    }
}

std::chrono::milliseconds DemoRun::paced(std::chrono::milliseconds pause) const {
    return options_.isFast ? 0ms : pause;
}

} // namespace brenvale::phone
