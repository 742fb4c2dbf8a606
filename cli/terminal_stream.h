#pragma once

// The stream that a program prints through: it takes UTF-8 and hands it on in the code page of the
// system's terminals, with control characters made visible, whoever printed them.

#include <ostream>
#include <streambuf>
#include <string>

namespace scrivo {

// Hands on whole lines, each as soon as it is complete, and the rest when it is flushed or ends.
class TerminalStream : public std::ostream {
 public:
  // Of the control characters only tab and line feed go through, and with `live` the carriage
  // return, by which a line that somebody looks at is written again. In UTF-8 (code page 65001)
  // bytes that are none go through, as names of files may hold them. `target` must outlive the
  // stream; that it fails shows in this stream alone.
  TerminalStream(std::ostream& target, int code_page, bool live = false);

 private:
  class Buffer : public std::streambuf {
   public:
    Buffer(std::ostream& target, int code_page, bool live)
        : target_(target), code_page_(code_page), live_(live) {}
    ~Buffer() override;

   protected:
    int_type overflow(int_type character) override;
    int sync() override;

   private:
    std::ostream& target_;
    const int code_page_;
    const bool live_;
    std::string line_;
  };

  Buffer buffer_;
};

}  // namespace scrivo
