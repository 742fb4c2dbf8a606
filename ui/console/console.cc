#include "ui/console/console.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include "text/visible_text.h"

namespace scrivo {
namespace {

// Where the characters of a UTF-8 text begin, and its end.
std::vector<std::size_t> CharacterStarts(const std::string& text) {
  std::vector<std::size_t> starts;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if ((static_cast<unsigned char>(text[i]) & 0xC0) != 0x80) starts.push_back(i);
  }
  starts.push_back(text.size());
  return starts;
}

std::size_t Width(const std::string& text) { return CharacterStarts(text).size() - 1; }

// `text` with columns that can be counted.
std::string OnOneLine(const std::string& text) {
  std::string line = VisibleLine(text);
  std::replace(line.begin(), line.end(), '\t', ' ');
  return line;
}

std::string TwoDigits(long number) {
  return std::string(number < 10 ? 1 : 0, '0') + std::to_string(number);
}

}  // namespace

Console::Console(std::ostream& out, std::ostream& err, ConsoleOptions options)
    : out_(out), err_(err), options_(std::move(options)), begin_(options_.clock()) {}

Console::~Console() { Erase(); }

void Console::Print(const std::string& line) {
  Erase();
  out_ << VisibleLine(line) << "\n" << std::flush;
  Draw();
}

void Console::Note(const std::string& line) {
  if (options_.quiet) return;
  const std::ios::iostate before = out_.rdstate();
  Print(line);
  out_.clear(before);
}

void Console::Remark(const std::string& line) {
  if (options_.quiet) return;
  Erase();
  err_ << VisibleLine(line) << "\n" << std::flush;
  Draw();
}

void Console::Warn(const std::string& text) {
  if (!options_.quiet) WriteError("warning: ", text);
}

void Console::Fail(const std::string& text) {
  ++failures_;
  WriteError("error: ", text);
}

void Console::WriteError(const std::string& kind, const std::string& text) {
  Erase();
  err_ << "scrivo: " << kind;
  std::string_view rest = text;
  while (true) {
    const std::size_t end = std::min(rest.find('\n'), rest.size());
    std::string_view line = rest.substr(0, end);
    if (line.ends_with('\r')) line.remove_suffix(1);
    err_ << VisibleLine(line) << "\n";
    if (end == rest.size()) break;
    rest.remove_prefix(end + 1);
    err_ << "  ";
  }
  err_ << std::flush;
  Draw();
}

void Console::BeginStep(const std::string& what) {
  step_ = what;
  percentage_.clear();
  detail_.clear();
  if (!options_.live && !options_.quiet) err_ << VisibleLine(what) << "\n" << std::flush;
  Draw();
}

void Console::ShowProgress(const std::string& percentage, const std::string& detail) {
  percentage_ = percentage;
  detail_ = detail;
  Draw();
}

void Console::EndSteps() {
  step_.clear();
  Erase();
}

std::string Console::StatusText() const {
  const std::string right = "  " + DurationText(Seconds());
  std::string left = step_;
  if (!percentage_.empty()) {
    left = std::string(percentage_.size() < 5 ? 5 - percentage_.size() : 0, ' ') + percentage_ +
           "  " + step_;
  }
  // A line that fills the last column would make the terminal begin another one.
  const std::size_t columns = options_.columns > 20 ? options_.columns - 1 : 20;
  const std::size_t room = columns - right.size();
  left = ShortenInTheMiddle(OnOneLine(left), room);
  if (!detail_.empty() && Width(left) + 2 < room) {
    left += "  " + ShortenInTheMiddle(OnOneLine(detail_), room - Width(left) - 2);
  }
  return left + right;
}

void Console::Draw() {
  if (!IsLive() || step_.empty()) return;
  const std::string text = StatusText();
  if (text == drawn_) return;
  const std::size_t before = Width(drawn_);
  const std::size_t now = Width(text);
  err_ << "\r" << text << std::string(before > now ? before - now : 0, ' ') << std::flush;
  drawn_ = text;
}

void Console::Erase() {
  if (drawn_.empty()) return;
  err_ << "\r" << std::string(Width(drawn_), ' ') << "\r" << std::flush;
  drawn_.clear();
}

std::string ShortenInTheMiddle(const std::string& text, std::size_t columns) {
  const std::vector<std::size_t> starts = CharacterStarts(text);
  const std::size_t width = starts.size() - 1;
  if (width <= columns) return text;
  const std::string gap(std::min<std::size_t>(columns, 3), '.');
  const std::size_t kept = columns - gap.size();
  const std::size_t head = kept / 2;
  return text.substr(0, starts[head]) + gap + text.substr(starts[width - (kept - head)]);
}

std::string DurationText(double seconds) {
  const long whole = static_cast<long>(seconds);
  const long minutes = whole / 60;
  if (minutes < 60) return std::to_string(minutes) + ":" + TwoDigits(whole % 60);
  return std::to_string(minutes / 60) + ":" + TwoDigits(minutes % 60) + ":" + TwoDigits(whole % 60);
}

}  // namespace scrivo
