#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>

#include "bytes/output_file.h"
#include "bytes/posix/descriptor.h"
#include "platform/command_line.h"
#include "platform/posix/interruption.h"
#include "platform/posix/services.h"
#include "platform/posix/system_error.h"

namespace scrivo {
namespace {

// Opens a file, again when a signal came in between that is not an interruption.
Descriptor Open(const std::string& path, int flags) {
  for (;;) {
    const int number = open(path.c_str(), flags | O_CLOEXEC, 0666);
    if (number != -1) return Descriptor(number);
    if (errno != EINTR) throw SystemError(errno, path);
    ThrowIfInterrupted();
  }
}

void WriteAndClose(Descriptor file, const std::string& path, const std::string& bytes) {
  for (std::size_t at = 0; at < bytes.size();) {
    const ssize_t written = write(file.Get(), bytes.data() + at, bytes.size() - at);
    if (written >= 0) {
      at += static_cast<std::size_t>(written);
    } else if (errno != EINTR) {
      throw SystemError(errno, path);
    }
  }
  if (!file.Close()) throw SystemError(errno, path);
}

struct stat StatusOf(const std::string& path) {
  struct stat status = {};
  if (stat(path.c_str(), &status) != 0) throw SystemError(errno, path);
  return status;
}

class PosixReader : public FileReader {
 public:
  PosixReader(Descriptor file, std::string path) : file_(std::move(file)), path_(std::move(path)) {}

  std::size_t Read(char* buffer, std::size_t size) override {
    for (;;) {
      const ssize_t got = read(file_.Get(), buffer, size);
      if (got >= 0) return static_cast<std::size_t>(got);
      if (errno != EINTR) throw SystemError(errno, path_);
      ThrowIfInterrupted();
    }
  }

 private:
  Descriptor file_;
  std::string path_;
};

struct CloseFolder {
  void operator()(DIR* folder) const { closedir(folder); }
};

bool IsFolder(const std::string& folder, const dirent& entry) {
  if (entry.d_type != DT_UNKNOWN && entry.d_type != DT_LNK) return entry.d_type == DT_DIR;
  struct stat status = {};
  const std::string path = folder + "/" + entry.d_name;
  return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

}  // namespace

PosixFiles::PosixFiles()
    : next_number_(static_cast<std::uint32_t>(std::chrono::system_clock::now().time_since_epoch() /
                                                  std::chrono::milliseconds(1) +
                                              getpid())) {}

bool PosixFiles::FileExists(const std::string& path) {
  struct stat status = {};
  return stat(path.c_str(), &status) == 0 && !S_ISDIR(status.st_mode);
}

bool PosixFiles::FolderExists(const std::string& path) {
  struct stat status = {};
  return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

std::uint64_t PosixFiles::Size(const std::string& path) {
  return static_cast<std::uint64_t>(StatusOf(path).st_size);
}

std::unique_ptr<FileReader> PosixFiles::OpenForReading(const std::string& path) {
  ThrowIfInterrupted();
  // Without waiting: a pipe with a name, met among the files of a folder, may have no writer.
  Descriptor file = Open(path, O_RDONLY | O_NONBLOCK);
  struct stat status = {};
  if (fstat(file.Get(), &status) != 0) throw SystemError(errno, path);
  if (S_ISDIR(status.st_mode)) throw SystemError(EISDIR, path);
  if (S_ISFIFO(status.st_mode)) throw SystemError(EINVAL, path);
  return std::make_unique<PosixReader>(std::move(file), path);
}

void PosixFiles::Write(const std::string& path, const std::string& bytes) {
  ThrowIfInterrupted();
  WriteAndClose(Open(path, O_WRONLY | O_CREAT | O_TRUNC), path, bytes);
}

void PosixFiles::WriteWhole(const std::string& path, const std::string& bytes) {
  ThrowIfInterrupted();
  std::error_code error;
  const auto file = OutputFile::Create(path, &error);
  const auto* data = reinterpret_cast<const std::uint8_t*>(bytes.data());
  if (file && file->WriteAt(0, {data, bytes.size()}) && file->Commit()) return;
  throw SystemError(file ? file->Reason().value() : error.value(), path);
}

void PosixFiles::Append(const std::string& path, const std::string& bytes) {
  WriteAndClose(Open(path, O_WRONLY | O_CREAT | O_APPEND), path, bytes);
}

void PosixFiles::Remove(const std::string& path, bool forced) {
  constexpr mode_t kAnyWrite = S_IWUSR | S_IWGRP | S_IWOTH;
  struct stat status = {};
  if (lstat(path.c_str(), &status) != 0) throw SystemError(errno, path);
  if (S_ISDIR(status.st_mode)) throw SystemError(EISDIR, path);
  if (!forced && (status.st_mode & kAnyWrite) == 0) throw SystemError(EACCES, path);
  if (unlink(path.c_str()) != 0) throw SystemError(errno, path);
}

void PosixFiles::MakeFolder(const std::string& path) {
  ThrowIfInterrupted();
  if (mkdir(path.c_str(), 0777) == 0) return;
  if (errno == ENOENT) throw SystemError(ENOTDIR, path);  // its parent is what is missing
  throw SystemError(errno, path);
}

std::vector<FolderEntry> PosixFiles::List(const std::string& folder) {
  ThrowIfInterrupted();
  const std::unique_ptr<DIR, CloseFolder> opened(opendir(folder.c_str()));
  if (!opened) throw SystemError(errno == ENOENT ? ENOTDIR : errno, folder);
  std::vector<FolderEntry> entries;
  for (;;) {
    errno = 0;
    const dirent* const entry = readdir(opened.get());
    if (!entry) {
      if (errno != 0) throw SystemError(errno, folder);
      return entries;
    }
    const std::string name = entry->d_name;
    if (name != "." && name != "..") entries.push_back({name, IsFolder(folder, *entry)});
  }
}

std::string PosixFiles::MakeUniqueFile(const std::string& folder, const std::string& prefix) {
  constexpr std::uint32_t kNumbers = 0xFFFF;
  if (Interrupted()) return "";
  for (std::uint32_t tries = 0; tries < kNumbers; ++tries) {
    char number[8];
    std::snprintf(number, sizeof number, "%X", next_number_++ % kNumbers + 1);
    const std::string path = folder + "/" + prefix.substr(0, 3) + number + ".tmp";
    const Descriptor made(open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
    if (made.IsOpen()) return path;
    if (errno != EEXIST && errno != EINTR) return "";
  }
  return "";
}

std::string PosixFiles::ShortForm(const std::string& path) {
  struct stat status = {};
  return stat(path.c_str(), &status) == 0 ? EscapeWord(path) : "";
}

std::string PosixFiles::RealPath(const std::string& path) {
  const std::unique_ptr<char, void (*)(void*)> real(realpath(path.c_str(), nullptr), std::free);
  return real ? std::string(real.get()) : path;
}

}  // namespace scrivo
