#include "hhc/window_stream.h"

#include <algorithm>

#include "bytes/byte_writer.h"
#include "text/ascii_text.h"

namespace scrivo {
namespace {

namespace argument = window_argument;

constexpr std::uint32_t kEntrySize = 0xC4, kOldEntrySize = 0xBC;

// Offsets in an entry.
constexpr std::size_t kName = 0x08, kMask = 0x0C, kPaneStyleAt = 0x10, kTitleAt = 0x14,
                      kStyleAt = 0x18, kExtendedStyleAt = 0x1C, kRectangleAt = 0x20,
                      kShowStateAt = 0x30, kPaneWidthAt = 0x4C, kContentsAt = 0x60, kIndexAt = 0x64,
                      kDefaultAt = 0x68, kHomeAt = 0x6C, kButtonsAt = 0x70, kPaneClosedAt = 0x74,
                      kDefaultPaneAt = 0x78, kTabPositionAt = 0x7C, kNotifyIdAt = 0x80,
                      kJump1TextAt = 0x9C, kJump2TextAt = 0xA0, kJump1TargetAt = 0xA4,
                      kJump2TargetAt = 0xA8;

struct NumberField {
  std::size_t argument, offset;
  std::uint32_t mask;  // the bit that says the field is given
};

constexpr NumberField kNumbers[] = {
    {argument::kPaneStyle, kPaneStyleAt, 0x2},
    {argument::kStyle, kStyleAt, 0x4},
    {argument::kExtendedStyle, kExtendedStyleAt, 0x8},
    {argument::kPaneWidth, kPaneWidthAt, 0x20},
    {argument::kShowState, kShowStateAt, 0x40},
    {argument::kButtons, kButtonsAt, 0x100},
    {argument::kPaneClosed, kPaneClosedAt, 0x200},
    {argument::kTabPosition, kTabPositionAt, 0x400},
    {argument::kDefaultPane, kDefaultPaneAt, 0x2000},
    {argument::kNotifyId, kNotifyIdAt, 0},
};
constexpr std::uint32_t kMaskRectangle = 0x10;
// The original sets this bit in every window, whether a tab position is given or not.
constexpr std::uint32_t kMaskTabPosition = 0x400;

struct TextField {
  std::size_t argument, offset;
  bool is_path;
};

// In the order in which their strings are added.
constexpr TextField kTexts[] = {
    {argument::kTitle, kTitleAt, false},         {argument::kContentsFile, kContentsAt, true},
    {argument::kIndexFile, kIndexAt, true},      {argument::kDefaultFile, kDefaultAt, true},
    {argument::kHomeFile, kHomeAt, true},        {argument::kJump1Target, kJump1TargetAt, true},
    {argument::kJump1Text, kJump1TextAt, false}, {argument::kJump2Target, kJump2TargetAt, true},
    {argument::kJump2Text, kJump2TextAt, false},
};

// "[left,top,right,bottom]"; missing numbers are 0.
void SetRectangle(std::string_view text, std::size_t offset, ByteWriter* out) {
  if (text.starts_with('[')) text.remove_prefix(1);
  if (text.ends_with(']')) text.remove_suffix(1);
  for (std::size_t i = 0; i < 4 && !text.empty(); ++i) {
    const std::size_t comma = text.find(',');
    std::string_view part = Trimmed(text.substr(0, comma));
    const bool negative = part.starts_with('-');
    if (negative) part.remove_prefix(1);
    const std::uint32_t number = ProjectNumber(part);
    out->Set32(offset + 4 * i, negative ? 0 - number : number);
    text = comma == std::string_view::npos ? std::string_view() : text.substr(comma + 1);
  }
}

void WriteWindow(const ProjectWindow& window, std::uint32_t size, StringsTable* strings,
                 ByteWriter* out) {
  const std::size_t start = out->Size();
  out->PadTo(start + size);
  out->Set32(start, size);
  out->Set32(start + kName, strings->Share(window.name));
  for (const TextField& field : kTexts) {
    std::string text = WindowArgument(window, field.argument);
    if (field.is_path) std::replace(text.begin(), text.end(), '\\', '/');
    out->Set32(start + field.offset, strings->Share(text));
  }
  std::uint32_t mask = kMaskTabPosition;
  for (const NumberField& field : kNumbers) {
    const std::string text = WindowArgument(window, field.argument);
    if (text.empty()) continue;
    mask |= field.mask;
    out->Set32(start + field.offset, ProjectNumber(text));
  }
  const std::string rectangle = WindowArgument(window, argument::kPosition);
  if (!rectangle.empty()) {
    mask |= kMaskRectangle;
    SetRectangle(rectangle, start + kRectangleAt, out);
  }
  out->Set32(start + kMask, mask);
}

}  // namespace

std::string WindowArgument(const ProjectWindow& window, std::size_t position) {
  return position < window.arguments.size() ? window.arguments[position] : std::string();
}

std::vector<std::uint8_t> WriteWindows(const std::vector<ProjectWindow>& windows, bool old_format,
                                       StringsTable* strings) {
  const std::uint32_t size = old_format ? kOldEntrySize : kEntrySize;
  ByteWriter out;
  out.Put32(static_cast<std::uint32_t>(windows.size()));
  out.Put32(size);
  for (const ProjectWindow& window : windows) WriteWindow(window, size, strings, &out);
  return out.Take();
}

}  // namespace scrivo
