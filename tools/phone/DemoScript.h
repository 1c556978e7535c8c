#pragma once

#include "DemoPhone.h"

#include <QList>

#include <chrono>
#include <functional>

namespace brenvale::phone {

/// One thing that happens in the demo's day, after a pause.
struct DemoStep {
    std::chrono::milliseconds pause;
    std::function<Reaction(DemoPhone& phone)> perform;
    bool endsWithCall = false; ///< the next step waits until the phone no longer rings or talks
};

/// The day of the demo, from first to last. The phone has introduced itself before.
QList<DemoStep> demoScript();

} // namespace brenvale::phone
