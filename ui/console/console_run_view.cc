#include "ui/console/console_run_view.h"

namespace scrivo {
namespace {

// More than any terminal shows of one line.
constexpr std::size_t kLongestLine = 1000;

}  // namespace

void ConsoleRunView::ShowBusy(bool busy) {
  if (!busy) console_.EndSteps();
}

void ConsoleRunView::SetProgress(const std::string& caption, int) {
  percentage_ = caption;
  console_.ShowProgress(percentage_, last_line_);
}

void ConsoleRunView::ReplaceTranscript(const std::string&) {
  line_.clear();
  last_line_.clear();
}

void ConsoleRunView::AppendTranscript(const std::string& text) {
  for (const char c : text) {
    if (c != '\r' && c != '\n') {
      if (line_.size() < kLongestLine) line_ += c;
    } else if (!line_.empty()) {
      last_line_ = std::move(line_);
      line_.clear();
      if (on_line_) on_line_(last_line_);
    }
  }
  console_.ShowProgress(percentage_, last_line_);
}

}  // namespace scrivo
