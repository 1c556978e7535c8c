#include "notifications/BatteryStage.h"

#include <algorithm>
#include <array>

namespace brenvale {

namespace {

struct Stage {
    qint64 level;
    const char16_t* emoji;
    const char16_t* body;
};

constexpr std::array stages{
    Stage{25, u"🔋", u"Battery is low — connect a charger."},
    Stage{20, u"🟡", u"Getting low — find a charger."},
    Stage{15, u"🟡", u"Running low — consider charging."},
    Stage{10, u"🟠", u"Very low — connect a charger soon."},
    Stage{5, u"🔴", u"Critically low — connect a charger now."},
    Stage{0, u"🪫", u"Battery is empty — plug in immediately!"},
};

/// The row of a stage; the first one serves for any other value.
const Stage& rowOf(qint64 stage) {
    const auto* row = std::ranges::find(stages, stage, &Stage::level);
    return row == stages.end() ? stages.front() : *row;
}

} // namespace

std::optional<qint64> nextBatteryStage(qint64 level, std::optional<qint64> lastStage) {
    for (const auto& stage : stages) {
        if (level <= stage.level && (!lastStage || stage.level < *lastStage)) {
            return stage.level;
        }
    }
    return {};
}

QString batteryAlertTitle(qint64 stage, const QString& deviceName, qint64 level) {
    return QString::fromUtf16(rowOf(stage).emoji) + u' ' + deviceName + QStringLiteral(" — ") +
           QString::number(level) + QStringLiteral("% Battery");
}

QString batteryAlertBody(qint64 stage) {
    return QString::fromUtf16(rowOf(stage).body);
}

} // namespace brenvale
