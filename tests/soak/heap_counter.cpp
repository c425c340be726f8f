// Loaded into a program ahead of its allocator: tells in the file that VELMO_HEAP_FILE names how many bytes
// the program has asked for and not given back. What the system says of a process is also what its allocator
// keeps.

#include <fcntl.h>
#include <malloc.h>
#include <sys/mman.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdint>
#include <cstdlib>

extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* memory);
}

namespace {

using Count = std::atomic<std::int64_t>;

Count own = 0;
Count* inUse = &own;

/// Programs that it starts in turn find the file, and count for nobody.
[[gnu::constructor]] void share() {
    const char* name = std::getenv("VELMO_HEAP_FILE");
    const int file = name ? open(name, O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600) : -1;
    if (file < 0)
        return;
    void* page = ftruncate(file, sizeof(Count)) == 0
                     ? mmap(nullptr, sizeof(Count), PROT_READ | PROT_WRITE, MAP_SHARED, file, 0)
                     : MAP_FAILED;
    close(file);
    if (page == MAP_FAILED)
        return;
    inUse = new (page) Count(own.load());
}

void* taken(void* memory) {
    *inUse += static_cast<std::int64_t>(malloc_usable_size(memory));
    return memory;
}

void given(void* memory) {
    *inUse -= static_cast<std::int64_t>(malloc_usable_size(memory));
}

}  // namespace

extern "C" {

void* malloc(std::size_t size) {
    return taken(__libc_malloc(size));
}

void* calloc(std::size_t count, std::size_t size) {
    return taken(__libc_calloc(count, size));
}

void* realloc(void* memory, std::size_t size) {
    const auto before = static_cast<std::int64_t>(malloc_usable_size(memory));
    void* result = __libc_realloc(memory, size);
    if (!result && size > 0)
        return nullptr;
    *inUse -= before;
    return taken(result);
}

void* memalign(std::size_t alignment, std::size_t size) {
    return taken(__libc_memalign(alignment, size));
}

void* aligned_alloc(std::size_t alignment, std::size_t size) {
    return memalign(alignment, size);
}

int posix_memalign(void** result, std::size_t alignment, std::size_t size) {
    void* memory = memalign(alignment, size);
    if (memory)
        *result = memory;
    return memory ? 0 : ENOMEM;
}

void free(void* memory) {
    given(memory);
    __libc_free(memory);
}
}
