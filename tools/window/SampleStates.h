#pragma once

#include "fakes/TestView.h"

#include <QString>

#include <functional>
#include <vector>

namespace brenvale {

/// What the window may have to show, by name.
struct SampleState {
    QString name;
    std::function<void(TestView& test)> fill;
};

/// From nothing at all to more than anybody has.
const std::vector<SampleState>& sampleStates();

} // namespace brenvale
