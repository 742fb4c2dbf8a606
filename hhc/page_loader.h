#pragma once

// Reads and scans the files of a project ahead of the compiler, on threads of its own.

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <exception>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <system_error>
#include <thread>
#include <vector>

#include "hhc/page_scan.h"
#include "project/source_files.h"

namespace scrivo {

enum class FileKind { kPage, kStyleSheet, kOther };

// What kind of file a name says it is. Only its extension counts.
FileKind KindOfFile(std::string_view path);

struct LoadedFile {
  bool readable = false;
  std::error_code error;  // why not
  std::string bytes;
  std::string decoded;               // of a page or style sheet in UTF-16: its text in UTF-8
  std::unique_ptr<ByteSource> rest;  // a large file instead of its bytes: read it in pieces
  PageScan page;                     // of a page
  PageWords words;                   // of a page, when asked for
  std::vector<PageLink> links;       // of a style sheet

  // What the offsets of links and tags count in.
  std::string_view Text() const { return decoded.empty() ? bytes : decoded; }
};

// Files come out of Take in the order in which they went into Submit. What waits to be taken is
// bounded in number and bytes, however many are submitted. Each result depends on its file alone.
class PageLoader {
 public:
  // `files` must outlive the loader. `words`: pages are indexed.
  PageLoader(const SourceFiles& files, int code_page, bool words, int threads);
  ~PageLoader();
  PageLoader(const PageLoader&) = delete;
  PageLoader& operator=(const PageLoader&) = delete;

  void Submit(std::string disk_path, FileKind kind);

  // Files submitted and not yet taken.
  std::size_t Waiting() const { return waiting_; }

  // Waits for the oldest submitted file. There must be one. Throws what loading it has thrown, such
  // as std::bad_alloc.
  LoadedFile Take();

 private:
  struct Job {
    std::string path;
    FileKind kind;
    bool done = false;
    std::uint64_t size = 0;
    LoadedFile result;
    std::exception_ptr exception;  // there is no result
  };

  void Work();
  void Load(Job* job, WordCollector* collector);
  void Reserve(Job* job, std::uint64_t size);

  const SourceFiles& files_;
  const int code_page_;
  const bool words_;

  std::mutex mutex_;  // guards everything below but waiting_, which belongs to the caller
  std::condition_variable work_ready_, result_ready_, room_ready_;
  std::deque<std::unique_ptr<Job>> jobs_;
  std::size_t started_ = 0;  // jobs_ before this one are being worked on or done
  std::uint64_t bytes_ = 0;  // read and not yet taken
  bool stopping_ = false;
  std::size_t waiting_ = 0;

  std::vector<std::thread> threads_;
};

}  // namespace scrivo
