#pragma once

#include <QHashFunctions>
#include <QString>

namespace brenvale {

/// One SIM of the phone.
struct SimInfo {
    qint64 slot = 0; ///< as the phone numbers it; quoted when a call or an SMS goes out
    QString carrier;

    [[nodiscard]] qint64 id() const { return slot; }

    bool operator==(const SimInfo&) const = default;
};

inline size_t qHash(const SimInfo& sim, size_t seed = 0) {
    return qHashMulti(seed, sim.slot, sim.carrier);
}

} // namespace brenvale
