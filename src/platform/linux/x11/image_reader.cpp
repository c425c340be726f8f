#include "image_reader.h"

#include "linux/x11/reply.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/socket.h>
#include <unistd.h>
#include <xcb/shm.h>

#include <algorithm>
#include <cstddef>
#include <span>

namespace velmo::x11 {

namespace {

constexpr std::size_t bytesOfPixel = 4;

std::size_t bytesOf(int width, int height) {
    return static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * bytesOfPixel;
}

/// Memory that can be handed to another process.
class SharedMemory {
public:
    explicit SharedMemory(std::size_t size) : size_(size) {
        descriptor_ = memfd_create("velmo-pictures", MFD_CLOEXEC);
        if (descriptor_ < 0 || ftruncate(descriptor_, static_cast<off_t>(size)) != 0)
            return;
        void* address = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED, descriptor_, 0);
        if (address != MAP_FAILED)
            begin_ = static_cast<const std::uint8_t*>(address);
    }
    ~SharedMemory() {
        if (begin_)
            munmap(const_cast<std::uint8_t*>(begin_), size_);
        if (descriptor_ >= 0)
            close(descriptor_);
    }
    SharedMemory(const SharedMemory&) = delete;
    SharedMemory& operator=(const SharedMemory&) = delete;

    bool isValid() const { return begin_ != nullptr; }
    /// One that its receiver closes.
    int descriptor() const { return fcntl(descriptor_, F_DUPFD_CLOEXEC, 0); }
    std::span<const std::uint8_t> bytes() const { return {begin_, size_}; }

private:
    std::size_t size_;
    int descriptor_ = -1;
    const std::uint8_t* begin_ = nullptr;
};

/// Descriptors travel through sockets of this machine alone.
bool isLocal(xcb_connection_t* connection) {
    sockaddr_storage address{};
    socklen_t size = sizeof address;
    return getsockname(xcb_get_file_descriptor(connection), reinterpret_cast<sockaddr*>(&address), &size) ==
               0 &&
           address.ss_family == AF_UNIX;
}

}  // namespace

std::optional<std::vector<std::uint8_t>> ImageReader::read(xcb_pixmap_t pixmap, int width, int height) {
    if (!sharesMemory_)
        sharesMemory_ = canShareMemory();
    std::optional<std::vector<std::uint8_t>> pixels;
    if (*sharesMemory_)
        pixels = readShared(pixmap, width, height);
    if (!pixels) {
        sharesMemory_ = false;
        pixels = readSent(pixmap, width, height);
    }
    if (pixels && xcb_get_setup(connection_.raw())->image_byte_order == XCB_IMAGE_ORDER_MSB_FIRST) {
        for (std::size_t offset = 0; offset < pixels->size(); offset += bytesOfPixel) {
            const auto pixel = pixels->begin() + static_cast<std::ptrdiff_t>(offset);
            std::reverse(pixel, pixel + bytesOfPixel);
        }
    }
    return pixels;
}

bool ImageReader::canShareMemory() const {
    xcb_connection_t* raw = connection_.raw();
    const auto* extension = xcb_get_extension_data(raw, &xcb_shm_id);
    if (!extension || !extension->present || !isLocal(raw))
        return false;
    const auto version = owned(xcb_shm_query_version_reply(raw, xcb_shm_query_version(raw), nullptr));
    // From 1.2 on, memory is shared by descriptors.
    return version && (version->major_version > 1 || version->minor_version >= 2);
}

std::optional<std::vector<std::uint8_t>> ImageReader::readShared(xcb_pixmap_t pixmap, int width,
                                                                 int height) const {
    xcb_connection_t* raw = connection_.raw();
    const SharedMemory memory(bytesOf(width, height));
    const int descriptor = memory.isValid() ? memory.descriptor() : -1;
    if (descriptor < 0)
        return std::nullopt;
    const xcb_shm_seg_t segment = connection_.newId();
    xcb_shm_attach_fd(raw, segment, descriptor, 0);
    const auto cookie =
        xcb_shm_get_image(raw, pixmap, 0, 0, static_cast<std::uint16_t>(width),
                          static_cast<std::uint16_t>(height), ~0U, XCB_IMAGE_FORMAT_Z_PIXMAP, segment, 0);
    xcb_shm_detach(raw, segment);
    const auto reply = owned(xcb_shm_get_image_reply(raw, cookie, nullptr));
    const auto bytes = memory.bytes();
    if (!reply || reply->size < bytes.size())
        return std::nullopt;
    return std::vector<std::uint8_t>(bytes.begin(), bytes.end());
}

std::optional<std::vector<std::uint8_t>> ImageReader::readSent(xcb_pixmap_t pixmap, int width,
                                                               int height) const {
    xcb_connection_t* raw = connection_.raw();
    const auto cookie =
        xcb_get_image(raw, XCB_IMAGE_FORMAT_Z_PIXMAP, pixmap, 0, 0, static_cast<std::uint16_t>(width),
                      static_cast<std::uint16_t>(height), ~0U);
    const auto reply = owned(xcb_get_image_reply(raw, cookie, nullptr));
    const auto size = bytesOf(width, height);
    if (!reply || static_cast<std::size_t>(xcb_get_image_data_length(reply.get())) < size)
        return std::nullopt;
    const auto* begin = xcb_get_image_data(reply.get());
    return std::vector<std::uint8_t>(begin, begin + size);
}

}  // namespace velmo::x11
