#include "platform/linux/panels/SharedPictures.h"

#include <QImage>

#include <algorithm>

#include <sys/mman.h>
#include <unistd.h>
#include <wayland-client-protocol.h>

namespace brenvale {

namespace {

/// A file in memory with these bytes; -1 where there is no room.
int memoryFile(const uchar* bytes, qsizetype size) {
    const int descriptor = ::memfd_create("brenvale-panel", MFD_CLOEXEC);
    for (qsizetype written = 0; descriptor >= 0 && written < size;) {
        const auto count = ::write(descriptor, bytes + written, static_cast<std::size_t>(size - written));
        if (count <= 0) {
            ::close(descriptor);
            return -1;
        }
        written += count;
    }
    return descriptor;
}

} // namespace

SharedPictures::~SharedPictures() {
    std::ranges::for_each(buffers_, wl_buffer_destroy);
}

wl_buffer* SharedPictures::add(wl_shm* memory, const QImage& picture) {
    const int descriptor = memoryFile(picture.constBits(), picture.sizeInBytes());
    if (descriptor < 0) {
        return nullptr;
    }
    auto* pool = wl_shm_create_pool(memory, descriptor, static_cast<std::int32_t>(picture.sizeInBytes()));
    ::close(descriptor);
    auto* buffer =
        wl_shm_pool_create_buffer(pool, 0, picture.width(), picture.height(),
                                  static_cast<std::int32_t>(picture.bytesPerLine()), WL_SHM_FORMAT_ARGB8888);
    wl_shm_pool_destroy(pool);
    static constexpr wl_buffer_listener listener{.release = released};
    wl_buffer_add_listener(buffer, &listener, this);
    buffers_.push_back(buffer);
    return buffer;
}

void SharedPictures::released(void* data, wl_buffer* buffer) {
    std::erase(static_cast<SharedPictures*>(data)->buffers_, buffer);
    wl_buffer_destroy(buffer);
}

} // namespace brenvale
