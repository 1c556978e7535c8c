#pragma once

#include <pulse/pulseaudio.h>

namespace brenvale {

/// The functions of libpulse that we use. The library brings nineteen others along, codecs for the most part,
/// so it is loaded at the first change of the volume and not with the program.
struct PulseLibrary {
    decltype(&pa_mainloop_new) mainloopNew = nullptr;
    decltype(&pa_mainloop_free) mainloopFree = nullptr;
    decltype(&pa_mainloop_get_api) mainloopGetApi = nullptr;
    decltype(&pa_mainloop_prepare) mainloopPrepare = nullptr;
    decltype(&pa_mainloop_poll) mainloopPoll = nullptr;
    decltype(&pa_mainloop_dispatch) mainloopDispatch = nullptr;
    decltype(&pa_context_new) contextNew = nullptr;
    decltype(&pa_context_connect) contextConnect = nullptr;
    decltype(&pa_context_disconnect) contextDisconnect = nullptr;
    decltype(&pa_context_unref) contextUnref = nullptr;
    decltype(&pa_context_get_state) contextGetState = nullptr;
    decltype(&pa_context_errno) contextErrno = nullptr;
    decltype(&pa_context_get_sink_info_by_name) contextGetSinkInfoByName = nullptr;
    decltype(&pa_context_set_sink_volume_by_index) contextSetSinkVolumeByIndex = nullptr;
    decltype(&pa_operation_unref) operationUnref = nullptr;
    decltype(&pa_cvolume_max) cvolumeMax = nullptr;
    decltype(&pa_cvolume_scale) cvolumeScale = nullptr;
    decltype(&pa_strerror) strerror = nullptr;

    /// The library, once it is loaded; null where the system has none. Any thread.
    [[nodiscard]] static const PulseLibrary* load();
};

} // namespace brenvale
