#include "platform/linux/scripts/PulseLibrary.h"

#include <QLibrary>

#include <optional>

namespace brenvale {

namespace {

std::optional<PulseLibrary> loaded() {
    QLibrary library(QStringLiteral("pulse"), 0);
    PulseLibrary functions;
    bool isWhole = true;
    const auto resolve = [&](auto& function, const char* name) {
        function = reinterpret_cast<std::remove_reference_t<decltype(function)>>(library.resolve(name));
        isWhole = isWhole && function != nullptr;
    };
    resolve(functions.mainloopNew, "pa_mainloop_new");
    resolve(functions.mainloopFree, "pa_mainloop_free");
    resolve(functions.mainloopGetApi, "pa_mainloop_get_api");
    resolve(functions.mainloopPrepare, "pa_mainloop_prepare");
    resolve(functions.mainloopPoll, "pa_mainloop_poll");
    resolve(functions.mainloopDispatch, "pa_mainloop_dispatch");
    resolve(functions.contextNew, "pa_context_new");
    resolve(functions.contextConnect, "pa_context_connect");
    resolve(functions.contextDisconnect, "pa_context_disconnect");
    resolve(functions.contextUnref, "pa_context_unref");
    resolve(functions.contextGetState, "pa_context_get_state");
    resolve(functions.contextErrno, "pa_context_errno");
    resolve(functions.contextGetSinkInfoByName, "pa_context_get_sink_info_by_name");
    resolve(functions.contextSetSinkVolumeByIndex, "pa_context_set_sink_volume_by_index");
    resolve(functions.operationUnref, "pa_operation_unref");
    resolve(functions.cvolumeMax, "pa_cvolume_max");
    resolve(functions.cvolumeScale, "pa_cvolume_scale");
    resolve(functions.strerror, "pa_strerror");
    return isWhole ? std::optional(functions) : std::nullopt;
}

} // namespace

const PulseLibrary* PulseLibrary::load() {
    static const auto library = loaded();
    return library ? &*library : nullptr;
}

} // namespace brenvale
