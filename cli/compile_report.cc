#include "cli/compile_report.h"

#include <algorithm>

#include "hhc/messages.h"
#include "platform/ansi_names.h"
#include "system/error.h"
#include "system/interruption.h"
#include "text/visible_text.h"

namespace scrivo {

void StopIfInterrupted() {
  if (Interrupted()) throw Error(kUserInterrupt, "scrivo", "Interrupted");
}

CompileReport::CompileReport(Console& console, std::size_t files)
    : console_(console), files_(files) {}

void CompileReport::File(std::string_view path) { Line(NameText(std::string(path))); }

bool CompileReport::StopWanted() const { return Interrupted(); }

void CompileReport::Message(const CompileMessage& message) {
  const std::string text = VisibleLine(message.text);
  switch (message.severity) {
    case Severity::kNote:
      return console_.Remark(text);
    case Severity::kWarning:
      if (message.code == static_cast<int>(MessageCode::kCharactersLost)) {
        lost_ = text;
      } else {
        console_.Warn(text);
      }
      texts_.push_back("Warning: " + text);
      return;
    case Severity::kError:
      console_.Fail(text);
      texts_.push_back("Error: " + text);
      ++errors_;
  }
}

void CompileReport::TellLost() {
  if (!lost_.empty()) console_.Warn(lost_);
}

void CompileReport::Line(const std::string& line) {
  constexpr std::size_t kAlmostDone = 99;
  ++done_;
  const std::size_t percent = std::min(kAlmostDone, 100 * done_ / std::max<std::size_t>(files_, 1));
  console_.ShowProgress(std::to_string(percent) + " %", line);
}

}  // namespace scrivo
