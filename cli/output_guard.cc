#include "cli/output_guard.h"

#include <cstdint>
#include <string_view>

#include "bytes/little_endian.h"
#include "chm/container_format.h"
#include "errors/frame.h"
#include "platform/paths.h"
#include "system/error.h"
#include "system/services.h"

namespace scrivo {
namespace {

constexpr std::size_t kHeaderSize = itsf::kLengthVersion3 + size_section::kLength;

Files& Disk() { return *TheServices().files; }

std::string ReadStart(const std::string& path, std::size_t size) {
  const std::unique_ptr<FileReader> reader = Disk().OpenForReading(path);
  std::string bytes(size, '\0');
  std::size_t got = 0;
  while (got < size) {
    const std::size_t now = reader->Read(bytes.data() + got, size - got);
    if (now == 0) break;
    got += now;
  }
  bytes.resize(got);
  return bytes;
}

}  // namespace

OutputGuard::OutputGuard(std::string path) : path_(std::move(path)) {
  if (Disk().FolderExists(path_)) {
    throw Error(kPathFileAccessError, "scrivo",
                path_ + ": the help file cannot be made: this is a folder. Name a file in it.");
  }
  std::string folder = GetFolder(path_);
  if (folder.empty()) folder = Separator(Globals().path_style);
  if (!Disk().FolderExists(folder)) {
    throw Error(kPathNotFound, "scrivo",
                path_ + ": the help file cannot be made: there is no folder " + folder +
                    ". Make it first.");
  }
  ThrowUnlessWritable(folder, "Name another folder for the help file with -o.");
  if (!Disk().FileExists(path_)) return;
  const std::string aside = Disk().MakeUniqueFile(folder, "Scrivo");
  try {
    Disk().Replace(path_, aside);
  } catch (const Error& error) {
    IgnoringErrors([&] { Disk().Remove(aside, true); });
    throw Error(error.number, "scrivo",
                path_ + ": the help file cannot be replaced: " + error.description +
                    ". Close the program that shows it.");
  }
  aside_ = aside;
}

OutputGuard::~OutputGuard() {
  if (accepted_) return;
  IgnoringErrors([&] { Disk().Remove(path_, true); });
  if (!aside_.empty()) IgnoringErrors([&] { Disk().Replace(aside_, path_); });
}

bool OutputGuard::HasHelpFile() const {
  if (!Disk().FileExists(path_)) return false;
  const std::string start = ReadStart(path_, kHeaderSize);
  if (start.size() < kHeaderSize || !start.starts_with(itsf::kSignature)) return false;
  const auto* bytes = reinterpret_cast<const std::uint8_t*>(start.data());
  const std::uint64_t section = LoadLe64(bytes + itsf::kSizeSectionOffset);
  // Every compiler puts the section that tells the size right behind the header.
  if (section > kHeaderSize - size_section::kLength) return false;
  return LoadLe64(bytes + section + size_section::kFileSize) <= Disk().Size(path_);
}

void OutputGuard::Accept() {
  accepted_ = true;
  if (!aside_.empty()) IgnoringErrors([&] { Disk().Remove(aside_, true); });
}

void ThrowUnlessWritable(const std::string& folder, const std::string& what_to_do) {
  const std::string probe = Disk().MakeUniqueFile(folder, "Scrivo");
  if (probe.empty()) {
    throw Error(kPermissionDenied, "scrivo",
                folder + ": no file can be written into this folder. " + what_to_do);
  }
  IgnoringErrors([&] { Disk().Remove(probe, true); });
}

}  // namespace scrivo
