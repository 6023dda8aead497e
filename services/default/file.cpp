// The file library's entry points: each forwards to the installed backend, or to the built-in stdio one.
#include "file.h"
#include <atomic>
#include "stdiofilebackend.h"
#include "neverdestroyed.h"

namespace {

ui::NeverDestroyed<ui::StdioFileBackend> s_builtin;
std::atomic<File::Backend*> s_backend{nullptr};

File::Backend& current() {
    File::Backend* backend = s_backend.load();
    return backend ? *backend : s_builtin.value;
}

} // namespace

File::Backend::~Backend() = default;
void File::Backend::registerThread() {}
void File::Backend::unregisterThread() {}

FileHandle* File::open(const char* name, const char* mode) {
    return name && mode ? current().open(name, mode) : nullptr;
}
int File::getLength(FileHandle* f) {
    return f ? current().getLength(f) : -1;
}
unsigned int File::read(void* buffer, unsigned int size, unsigned int count, FileHandle* f) {
    return f && buffer ? current().read(buffer, size, count, f) : 0;
}
void File::close(FileHandle* f) {
    if (f) current().close(f);
}
void File::registerThread() {
    current().registerThread();
}
void File::unregisterThread() {
    current().unregisterThread();
}
void File::setBackend(Backend* backend) {
    s_backend.store(backend);
}
File::Backend* File::backend() {
    return s_backend.load();
}
