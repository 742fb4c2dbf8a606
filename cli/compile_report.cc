#include "cli/compile_report.h"

#include <algorithm>
#include <string_view>

#include "hhc/messages.h"
#include "platform/paths.h"
#include "system/error.h"
#include "system/interruption.h"
#include "text/visible_text.h"

namespace scrivo {
namespace {

// A message without the page and line that it is about: "a.htm(3) : The linked file …".
std::string KindOf(const std::string& text) {
  constexpr std::string_view kBehindPlace = ") : ";
  const std::size_t place = text.find(kBehindPlace);
  return place == std::string::npos ? text : text.substr(place + kBehindPlace.size());
}

}  // namespace

void StopIfInterrupted() {
  if (Interrupted()) throw Error(kUserInterrupt, "scrivo", "Interrupted");
}

CompileReport::CompileReport(Console& console, std::size_t files, bool all_messages)
    : console_(console), files_(files), limit_(all_messages) {}

void CompileReport::File(std::string_view path) { Line(NameText(std::string(path))); }

bool CompileReport::StopWanted() const { return Interrupted(); }

void CompileReport::Message(const CompileMessage& message) {
  const std::string text = VisibleLine(
      message.reason.empty() ? message.text : message.text + " The reason: " + message.reason);
  switch (message.severity) {
    case Severity::kNote:
      return console_.Remark(text);
    case Severity::kWarning:
      ++messages_;
      if (!limit_.Shows(KindOf(text))) return;
      if (message.code == static_cast<int>(MessageCode::kCharactersLost)) {
        lost_ = text;
      } else {
        console_.Warn(text);
      }
      texts_.push_back("Warning: " + text);
      return;
    case Severity::kError:
      ++messages_;
      console_.Fail(text);
      texts_.push_back("Error: " + text);
      ++errors_;
  }
}

std::vector<std::string> CompileReport::Texts() const {
  std::vector<std::string> texts = texts_;
  for (const std::string& sum : limit_.Sums()) texts.push_back(sum);
  return texts;
}

void CompileReport::TellSums() {
  for (const std::string& sum : limit_.Sums()) console_.Warn(sum);
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
