#include "messages/Sims.h"

#include "records/HistoryStore.h"

#include <algorithm>

namespace brenvale {

Sims::Sims(HistoryStore& history)
    : sims_(history.availableSIMs.get()),
      reports_(history.availableSIMs.subscribe([this](const auto& sims) { simsReported(sims); })) {}

Sims::~Sims() = default;

void Sims::simsReported(const QList<SimInfo>& sims) {
    if (sims == sims_) {
        return;
    }
    sims_ = sims;
    if (!sims.isEmpty()) {
        selectedSimSlot_ = sims.first().slot;
    }
    emit simsChanged();
}

QStringList Sims::simCarriers() const {
    QStringList carriers;
    for (const auto& sim : sims_) {
        carriers.append(sim.carrier);
    }
    return carriers;
}

void Sims::setSelectedSimSlot(qint64 slot) {
    if (slot != selectedSimSlot_) {
        selectedSimSlot_ = slot;
        emit simsChanged();
    }
}

int Sims::selectedSimIndex() const {
    const auto sim = std::ranges::find(sims_, selectedSimSlot_, &SimInfo::slot);
    return sim == sims_.end() ? -1 : static_cast<int>(sim - sims_.begin());
}

void Sims::setSelectedSimIndex(int index) {
    if (index >= 0 && index < sims_.size()) {
        setSelectedSimSlot(sims_[index].slot);
    }
}

bool Sims::showsDialerSims() const {
    return sims_.size() > 1;
}

int Sims::dialerSimIndex() const {
    return selectedSimSlot_ == 0 || selectedSimSlot_ == 1 ? static_cast<int>(selectedSimSlot_) : -1;
}

void Sims::setDialerSimIndex(int index) {
    if (index == 0 || index == 1) {
        setSelectedSimSlot(index);
    }
}

} // namespace brenvale
