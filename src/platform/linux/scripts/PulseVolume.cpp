#include "platform/linux/scripts/PulseVolume.h"

#include "platform/linux/scripts/PulseLibrary.h"

#include <algorithm>
#include <cmath>

namespace brenvale {

namespace {

constexpr auto defaultOutput = "@DEFAULT_SINK@";
constexpr int fullVolume = 100;

/// One connection to the sound server, served by the thread that made it.
class PulseSession {
public:
    PulseSession(const PulseLibrary& pulse, std::chrono::milliseconds patience)
        : pulse_(pulse),
          deadline_(std::chrono::steady_clock::now() + patience),
          loop_(pulse.mainloopNew()),
          context_(pulse.contextNew(pulse.mainloopGetApi(loop_), "Brenvale")) {}

    PulseSession(const PulseSession&) = delete;
    PulseSession& operator=(const PulseSession&) = delete;
    PulseSession(PulseSession&&) = delete;
    PulseSession& operator=(PulseSession&&) = delete;

    ~PulseSession() {
        if (context_ != nullptr) {
            pulse_.contextDisconnect(context_);
            pulse_.contextUnref(context_);
        }
        pulse_.mainloopFree(loop_);
    }

    std::optional<QString> changeVolume(int difference) {
        if (!connect() || !findOutput()) {
            return error_;
        }
        const auto hundredths =
            std::lround(pulse_.cvolumeMax(&volume_) * double{fullVolume} / PA_VOLUME_NORM);
        const auto wanted = changedVolume(static_cast<int>(hundredths), difference);
        // Rounded up, so that it is read back as the same number of hundredths.
        const auto scaled =
            (std::uint64_t{PA_VOLUME_NORM} * static_cast<unsigned>(wanted) + fullVolume - 1) / fullVolume;
        pulse_.cvolumeScale(&volume_, static_cast<pa_volume_t>(scaled));
        return setVolume() ? std::nullopt : std::optional(error_);
    }

private:
    bool connect() {
        if (context_ == nullptr) {
            error_ = QStringLiteral("The sound server can't be asked.");
            return false;
        }
        if (pulse_.contextConnect(context_, nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr) < 0) {
            return fail();
        }
        return waitUntil([this] { return pulse_.contextGetState(context_) == PA_CONTEXT_READY; });
    }

    bool findOutput() {
        const auto found = [](pa_context*, const pa_sink_info* output, int end, void* data) {
            auto& session = *static_cast<PulseSession*>(data);
            if (output != nullptr) {
                session.output_ = output->index;
                session.volume_ = output->volume;
            }
            session.isAnswered_ = session.isAnswered_ || end != 0;
        };
        if (!answered(pulse_.contextGetSinkInfoByName(context_, defaultOutput, found, this))) {
            return false;
        }
        if (output_ == PA_INVALID_INDEX) {
            error_ = QStringLiteral("There is no sound output.");
            return false;
        }
        return true;
    }

    bool setVolume() {
        const auto isSet = [](pa_context*, int success, void* data) {
            auto& session = *static_cast<PulseSession*>(data);
            session.isAnswered_ = true;
            session.isSuccess_ = success != 0;
        };
        if (!answered(pulse_.contextSetSinkVolumeByIndex(context_, output_, &volume_, isSet, this))) {
            return false;
        }
        return isSuccess_ || fail();
    }

    /// Waits for the answer to `operation`, which is null where it could not be asked.
    bool answered(pa_operation* operation) {
        if (operation == nullptr) {
            return fail();
        }
        isAnswered_ = false;
        const bool isAnswered = waitUntil([this] { return isAnswered_; });
        pulse_.operationUnref(operation);
        return isAnswered;
    }

    template <typename Condition>
    bool waitUntil(Condition isMet) {
        while (!isMet()) {
            if (!PA_CONTEXT_IS_GOOD(pulse_.contextGetState(context_))) {
                return fail();
            }
            const auto left = std::chrono::duration_cast<std::chrono::microseconds>(
                deadline_ - std::chrono::steady_clock::now());
            if (left.count() <= 0) {
                error_ = QStringLiteral("The sound server does not answer.");
                return false;
            }
            if (pulse_.mainloopPrepare(loop_, static_cast<int>(left.count())) < 0 ||
                pulse_.mainloopPoll(loop_) < 0 || pulse_.mainloopDispatch(loop_) < 0) {
                return fail();
            }
        }
        return true;
    }

    /// Keeps what the library says, and gives false.
    bool fail() {
        const auto* reason = pulse_.strerror(pulse_.contextErrno(context_));
        error_ = QStringLiteral("The sound server: ") +
                 (reason == nullptr ? QStringLiteral("unknown error") : QString::fromUtf8(reason));
        return false;
    }

    const PulseLibrary& pulse_;
    std::chrono::steady_clock::time_point deadline_;
    pa_mainloop* loop_;
    pa_context* context_;
    std::uint32_t output_ = PA_INVALID_INDEX;
    pa_cvolume volume_{};
    bool isAnswered_ = false;
    bool isSuccess_ = false;
    QString error_;
};

} // namespace

int changedVolume(int present, int difference) {
    return std::clamp(std::clamp(present, 0, fullVolume) + difference, 0, fullVolume);
}

std::optional<QString> changeOutputVolume(int difference, std::chrono::milliseconds patience) {
    const auto* pulse = PulseLibrary::load();
    if (pulse == nullptr) {
        return QStringLiteral("The library of the sound server (libpulse) is not installed.");
    }
    return PulseSession(*pulse, patience).changeVolume(difference);
}

} // namespace brenvale
