// Loaded before the C library (LD_PRELOAD), makes one call of a program fail: the n-th of a kind.
//
// SCRIVO_FAULT_KIND   open, write, read, close, rename, move (renaming to a name that must be
// free), link,
//                     unlink, mkdir, fsync, mmap, malloc or thread; without it nothing fails
// SCRIVO_FAULT_NTH    which call of that kind, from 1 on
// SCRIVO_FAULT_ERROR  the errno that it fails with
// SCRIVO_FAULT_LOG    a file that gets one line "KIND CALLS" for each kind when the program ends
//
// A program that asks how many processors there are is told of one, so that its one worker makes
// the n-th call the same each time.
//
// Calls on the streams that a program is started with (0 to 2) do not count: failing to tell is not
// failing to work.

#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <pthread.h>
#include <stdio.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/sysinfo.h>
#include <sys/uio.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstdlib>
#include <cstring>

namespace {

enum Kind {
  kOpen,
  kWrite,
  kRead,
  kClose,
  kRename,
  kMove,
  kLink,
  kUnlink,
  kMkdir,
  kFsync,
  kMmap,
  kMalloc,
  kThread,
  kKinds
};

constexpr const char* kNames[kKinds] = {"open", "write",  "read",   "close", "rename",
                                        "move", "link",   "unlink", "mkdir", "fsync",
                                        "mmap", "malloc", "thread"};

std::atomic<long> calls[kKinds];
int failing_kind = kKinds;
long failing_call = 0;
int failing_error = 0;
bool counting = false;

// Whether this call is the one that fails; errno is set then.
bool Fails(Kind kind) {
  if (!counting) return false;
  if (++calls[kind] != failing_call || kind != failing_kind) return false;
  errno = failing_error;
  return true;
}

bool IsStandard(int file) { return file >= 0 && file <= 2; }

template <typename Function>
Function Next(const char* name) {
  void* const found = dlsym(RTLD_NEXT, name);
  Function function;
  std::memcpy(&function, &found, sizeof function);
  return function;
}

__attribute__((constructor)) void Begin() {
  if (const char* kind = std::getenv("SCRIVO_FAULT_KIND")) {
    for (int i = 0; i < kKinds; ++i) {
      if (std::strcmp(kind, kNames[i]) == 0) failing_kind = i;
    }
  }
  if (const char* nth = std::getenv("SCRIVO_FAULT_NTH")) failing_call = std::atol(nth);
  if (const char* error = std::getenv("SCRIVO_FAULT_ERROR")) failing_error = std::atoi(error);
  // Seen by strace: from here on all calls of the program come by.
  syscall(SYS_access, "/scrivo-faults-begin", F_OK);
  counting = true;
}

__attribute__((destructor)) void End() {
  counting = false;
  syscall(SYS_access, "/scrivo-faults-end", F_OK);
  const char* const path = std::getenv("SCRIVO_FAULT_LOG");
  if (path == nullptr) return;
  const int file = static_cast<int>(
      syscall(SYS_openat, AT_FDCWD, path, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666));
  for (int i = 0; i < kKinds; ++i) {
    char line[64];
    const int size = snprintf(line, sizeof line, "%s %ld\n", kNames[i], calls[i].load());
    syscall(SYS_write, file, line, size);
  }
  syscall(SYS_close, file);
}

mode_t ModeOf(int flags, va_list arguments) {
  const bool makes = (flags & O_CREAT) != 0 || (flags & O_TMPFILE) == O_TMPFILE;
  return makes ? va_arg(arguments, mode_t) : 0;
}

}  // namespace

extern "C" {

void* __libc_malloc(size_t size);
void* __libc_calloc(size_t count, size_t size);
void* __libc_realloc(void* block, size_t size);

int open(const char* path, int flags, ...) {
  va_list arguments;
  va_start(arguments, flags);
  const mode_t mode = ModeOf(flags, arguments);
  va_end(arguments);
  if (Fails(kOpen)) return -1;
  static const auto next = Next<int (*)(const char*, int, ...)>("open");
  return next(path, flags, mode);
}

int open64(const char* path, int flags, ...) {
  va_list arguments;
  va_start(arguments, flags);
  const mode_t mode = ModeOf(flags, arguments);
  va_end(arguments);
  if (Fails(kOpen)) return -1;
  static const auto next = Next<int (*)(const char*, int, ...)>("open64");
  return next(path, flags, mode);
}

int openat(int folder, const char* path, int flags, ...) {
  va_list arguments;
  va_start(arguments, flags);
  const mode_t mode = ModeOf(flags, arguments);
  va_end(arguments);
  if (Fails(kOpen)) return -1;
  static const auto next = Next<int (*)(int, const char*, int, ...)>("openat");
  return next(folder, path, flags, mode);
}

int openat64(int folder, const char* path, int flags, ...) {
  va_list arguments;
  va_start(arguments, flags);
  const mode_t mode = ModeOf(flags, arguments);
  va_end(arguments);
  if (Fails(kOpen)) return -1;
  static const auto next = Next<int (*)(int, const char*, int, ...)>("openat64");
  return next(folder, path, flags, mode);
}

DIR* opendir(const char* path) {
  if (Fails(kOpen)) return nullptr;
  static const auto next = Next<DIR* (*)(const char*)>("opendir");
  return next(path);
}

struct dirent* readdir(DIR* folder) {
  if (Fails(kRead)) return nullptr;
  static const auto next = Next<struct dirent* (*)(DIR*)>("readdir");
  return next(folder);
}

struct dirent64* readdir64(DIR* folder) {
  if (Fails(kRead)) return nullptr;
  static const auto next = Next<struct dirent64* (*)(DIR*)>("readdir64");
  return next(folder);
}

FILE* fopen(const char* path, const char* mode) {
  if (Fails(kOpen)) return nullptr;
  static const auto next = Next<FILE* (*)(const char*, const char*)>("fopen");
  return next(path, mode);
}

FILE* fopen64(const char* path, const char* mode) {
  if (Fails(kOpen)) return nullptr;
  static const auto next = Next<FILE* (*)(const char*, const char*)>("fopen64");
  return next(path, mode);
}

ssize_t write(int file, const void* bytes, size_t size) {
  if (!IsStandard(file) && Fails(kWrite)) return -1;
  static const auto next = Next<ssize_t (*)(int, const void*, size_t)>("write");
  return next(file, bytes, size);
}

ssize_t writev(int file, const struct iovec* pieces, int count) {
  if (!IsStandard(file) && Fails(kWrite)) return -1;
  static const auto next = Next<ssize_t (*)(int, const struct iovec*, int)>("writev");
  return next(file, pieces, count);
}

ssize_t pwrite(int file, const void* bytes, size_t size, off_t offset) {
  if (Fails(kWrite)) return -1;
  static const auto next = Next<ssize_t (*)(int, const void*, size_t, off_t)>("pwrite");
  return next(file, bytes, size, offset);
}

ssize_t pwrite64(int file, const void* bytes, size_t size, off64_t offset) {
  if (Fails(kWrite)) return -1;
  static const auto next = Next<ssize_t (*)(int, const void*, size_t, off64_t)>("pwrite64");
  return next(file, bytes, size, offset);
}

ssize_t read(int file, void* bytes, size_t size) {
  if (!IsStandard(file) && Fails(kRead)) return -1;
  static const auto next = Next<ssize_t (*)(int, void*, size_t)>("read");
  return next(file, bytes, size);
}

ssize_t pread(int file, void* bytes, size_t size, off_t offset) {
  if (Fails(kRead)) return -1;
  static const auto next = Next<ssize_t (*)(int, void*, size_t, off_t)>("pread");
  return next(file, bytes, size, offset);
}

ssize_t pread64(int file, void* bytes, size_t size, off64_t offset) {
  if (Fails(kRead)) return -1;
  static const auto next = Next<ssize_t (*)(int, void*, size_t, off64_t)>("pread64");
  return next(file, bytes, size, offset);
}

// A close that fails has closed all the same.
int close(int file) {
  static const auto next = Next<int (*)(int)>("close");
  const int result = next(file);
  return !IsStandard(file) && Fails(kClose) ? -1 : result;
}

int closedir(DIR* folder) {
  static const auto next = Next<int (*)(DIR*)>("closedir");
  const int result = next(folder);
  return Fails(kClose) ? -1 : result;
}

int rename(const char* from, const char* to) {
  if (Fails(kRename)) return -1;
  static const auto next = Next<int (*)(const char*, const char*)>("rename");
  return next(from, to);
}

int renameat(int from_folder, const char* from, int to_folder, const char* to) {
  if (Fails(kRename)) return -1;
  static const auto next = Next<int (*)(int, const char*, int, const char*)>("renameat");
  return next(from_folder, from, to_folder, to);
}

int renameat2(int from_folder, const char* from, int to_folder, const char* to, unsigned flags) {
  if (Fails(kMove)) return -1;
  static const auto next = Next<int (*)(int, const char*, int, const char*, unsigned)>("renameat2");
  return next(from_folder, from, to_folder, to, flags);
}

int link(const char* from, const char* to) {
  if (Fails(kLink)) return -1;
  static const auto next = Next<int (*)(const char*, const char*)>("link");
  return next(from, to);
}

int linkat(int from_folder, const char* from, int to_folder, const char* to, int flags) {
  if (Fails(kLink)) return -1;
  static const auto next = Next<int (*)(int, const char*, int, const char*, int)>("linkat");
  return next(from_folder, from, to_folder, to, flags);
}

int unlink(const char* path) {
  if (Fails(kUnlink)) return -1;
  static const auto next = Next<int (*)(const char*)>("unlink");
  return next(path);
}

int unlinkat(int folder, const char* path, int flags) {
  if (Fails(kUnlink)) return -1;
  static const auto next = Next<int (*)(int, const char*, int)>("unlinkat");
  return next(folder, path, flags);
}

int mkdir(const char* path, mode_t mode) {
  if (Fails(kMkdir)) return -1;
  static const auto next = Next<int (*)(const char*, mode_t)>("mkdir");
  return next(path, mode);
}

int mkdirat(int folder, const char* path, mode_t mode) {
  if (Fails(kMkdir)) return -1;
  static const auto next = Next<int (*)(int, const char*, mode_t)>("mkdirat");
  return next(folder, path, mode);
}

int fsync(int file) {
  if (Fails(kFsync)) return -1;
  static const auto next = Next<int (*)(int)>("fsync");
  return next(file);
}

void* mmap(void* address, size_t size, int protection, int flags, int file, off_t offset) {
  if (Fails(kMmap)) return MAP_FAILED;
  static const auto next = Next<void* (*)(void*, size_t, int, int, int, off_t)>("mmap");
  return next(address, size, protection, flags, file, offset);
}

void* malloc(size_t size) { return Fails(kMalloc) ? nullptr : __libc_malloc(size); }

void* calloc(size_t count, size_t size) {
  return Fails(kMalloc) ? nullptr : __libc_calloc(count, size);
}

void* realloc(void* block, size_t size) {
  return Fails(kMalloc) ? nullptr : __libc_realloc(block, size);
}

int get_nprocs() { return 1; }

int pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*work)(void*),
                   void* argument) {
  if (Fails(kThread)) return failing_error;
  static const auto next =
      Next<int (*)(pthread_t*, const pthread_attr_t*, void* (*)(void*), void*)>("pthread_create");
  return next(thread, attributes, work, argument);
}

}  // extern "C"
