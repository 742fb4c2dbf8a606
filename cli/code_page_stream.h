#pragma once

// A stream that takes UTF-8 and hands it on in the code page of the system's terminals.

#include <ostream>
#include <streambuf>
#include <string>

namespace scrivo {

// Hands on whole lines, each as soon as it is complete, and the rest when it is flushed or ends.
class CodePageStream : public std::ostream {
 public:
  // `target` must outlive the stream.
  CodePageStream(std::ostream& target, int code_page);

 private:
  class Buffer : public std::streambuf {
   public:
    Buffer(std::ostream& target, int code_page) : target_(target), code_page_(code_page) {}
    ~Buffer() override { sync(); }

   protected:
    int_type overflow(int_type character) override;
    int sync() override;

   private:
    std::ostream& target_;
    int code_page_;
    std::string line_;
  };

  Buffer buffer_;
};

}  // namespace scrivo
