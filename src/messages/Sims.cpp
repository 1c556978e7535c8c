#include "shell/SettingsView.h"

#include <algorithm>

namespace brenvale {

void SettingsView::simsReported(const QList<SimInfo>& sims) {
    if (sims == sims_) {
        return;
    }
    sims_ = sims;
    if (!sims.isEmpty()) {
        selectedSimSlot_ = sims.first().slot;
    }
    emit simsChanged();
}

QStringList SettingsView::simCarriers() const {
    QStringList carriers;
    for (const auto& sim : sims_) {
        carriers.append(sim.carrier);
    }
    return carriers;
}

void SettingsView::setSelectedSimSlot(qint64 slot) {
    if (slot != selectedSimSlot_) {
        selectedSimSlot_ = slot;
        emit simsChanged();
    }
}

int SettingsView::selectedSimIndex() const {
    const auto sim = std::ranges::find(sims_, selectedSimSlot_, &SimInfo::slot);
    return sim == sims_.end() ? -1 : static_cast<int>(sim - sims_.begin());
}

void SettingsView::setSelectedSimIndex(int index) {
    if (index >= 0 && index < sims_.size()) {
        setSelectedSimSlot(sims_[index].slot);
    }
}

bool SettingsView::showsDialerSims() const {
    return sims_.size() > 1;
}

int SettingsView::dialerSimIndex() const {
    return selectedSimSlot_ == 0 || selectedSimSlot_ == 1 ? static_cast<int>(selectedSimSlot_) : -1;
}

void SettingsView::setDialerSimIndex(int index) {
    if (index == 0 || index == 1) {
        setSelectedSimSlot(index);
    }
}

} // namespace brenvale
