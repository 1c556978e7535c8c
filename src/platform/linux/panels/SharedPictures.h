#pragma once

#include <vector>

struct wl_buffer;
struct wl_shm;
class QImage;

namespace brenvale {

/// Pictures in memory that is shared with the compositor, each until the compositor has done with it. To be
/// destroyed before their connection. On main.
class SharedPictures {
public:
    SharedPictures() = default;
    ~SharedPictures();
    SharedPictures(const SharedPictures&) = delete;
    SharedPictures& operator=(const SharedPictures&) = delete;

    /// A copy of `picture`, whose format is ARGB32_Premultiplied, to be attached to a surface at once. Null
    /// where there is no memory.
    [[nodiscard]] wl_buffer* add(wl_shm* memory, const QImage& picture);

private:
    static void released(void* data, wl_buffer* buffer);

    std::vector<wl_buffer*> buffers_; ///< in use by the compositor
};

} // namespace brenvale
