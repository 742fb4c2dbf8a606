#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace scrivo {

// One name in a folder.
struct FolderEntry {
  std::string name;
  bool is_folder = false;
};

// A file open for reading from its beginning. Closed on destruction.
class FileReader {
 public:
  virtual ~FileReader() = default;

  // Reads up to `size` bytes into `buffer` and returns how many; 0 at the end of the file.
  virtual std::size_t Read(char* buffer, std::size_t size) = 0;
};

// The files and folders of the machine. A path is not text: on POSIX it is bytes, on Windows
// UTF-16, given here as text/wtf8.h has it, and it reaches the system as it is, whatever the code
// page. Failures are Errors whose description names the path: kFileNotFound, kPathNotFound,
// kPermissionDenied, kFileAlreadyExists, kDiskFull, kPathFileAccessError or kDeviceIoError.
class Files {
 public:
  virtual ~Files() = default;

  // True for an existing file that is not a folder; false also when this cannot be found out.
  virtual bool FileExists(const std::string& path) = 0;
  // True for an existing folder; false also when this cannot be found out.
  virtual bool FolderExists(const std::string& path) = 0;
  // The file's size in bytes.
  virtual std::uint64_t Size(const std::string& path) = 0;

  virtual std::unique_ptr<FileReader> OpenForReading(const std::string& path) = 0;
  // Creates or truncates the file and writes `bytes` as they are.
  virtual void Write(const std::string& path, const std::string& bytes) = 0;
  // The same, but at every instant there is the earlier file (or none) or the new one, whole.
  virtual void WriteWhole(const std::string& path, const std::string& bytes) = 0;
  // Opens the file at its end, creating it when it is missing, writes `bytes` and closes it.
  virtual void Append(const std::string& path, const std::string& bytes) = 0;
  // Removes a file. A read-only one only when `forced`; otherwise, and for one held open by a
  // program that does not share it, kPermissionDenied. A missing one is kFileNotFound.
  virtual void Remove(const std::string& path, bool forced) = 0;
  // Makes one folder; a missing parent is kPathNotFound, an existing one kFileAlreadyExists.
  virtual void MakeFolder(const std::string& path) = 0;
  // The names in a folder, in no particular order, without "." and "..".
  virtual std::vector<FolderEntry> List(const std::string& folder) = 0;

  // Creates an empty file with a name of its own in `folder`: the first three characters of
  // `prefix`, a number in hexadecimal digits, ".tmp". Returns its path, or "" when none can be
  // made there (no error).
  virtual std::string MakeUniqueFile(const std::string& folder, const std::string& prefix) = 0;
  // The short form of an existing path, a form that a command line takes without quotes; "" when
  // there is none.
  virtual std::string ShortForm(const std::string& path) = 0;
  // The path with every symbolic link in it followed, so that two names of one folder give the
  // same; `path` itself where this cannot be found out.
  virtual std::string RealPath(const std::string& path) { return path; }
};

// Reads a file whole. Errors as Files::OpenForReading.
std::string ReadWholeFile(Files& files, const std::string& path);

// Writes a whole text file: `text`, in the bytes of the file's code page, and CR LF. An existing
// file is overwritten. Failures are the Errors of Files::Write.
void WriteTextFile(const std::string& path, const std::string& text);

}  // namespace scrivo
