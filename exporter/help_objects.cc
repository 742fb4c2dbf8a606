#include "exporter/help_objects.h"

#include <algorithm>

#include "text/ascii_text.h"

namespace scrivo {
namespace {

std::string_view ParamOf(const HelpObject& object, std::string_view name) {
  for (const auto& [key, value] : object.params) {
    if (key == name) return value;
  }
  return {};
}

// The values of Item1, Item2 and so on, in the order of the object.
std::vector<std::string_view> ItemsOf(const HelpObject& object) {
  std::vector<std::string_view> items;
  for (const auto& [key, value] : object.params) {
    if (key.starts_with("item") && key.size() > 4 && key[4] >= '0' && key[4] <= '9') {
      items.push_back(value);
    }
  }
  return items;
}

// Calls on_part for the parts of `text` between semicolons, blanks around them cut off.
template <typename OnPart>
void ForEachPart(std::string_view text, OnPart on_part) {
  while (true) {
    const std::size_t end = std::min(text.find(';'), text.size());
    const std::string_view part = Trimmed(text.substr(0, end));
    if (!part.empty()) on_part(part);
    if (end == text.size()) return;
    text.remove_prefix(end + 1);
  }
}

void AddTopicsOf(const std::vector<std::string_view>& items, const HelpTopics::Links& topics,
                 std::vector<HelpLink>* links) {
  for (const std::string_view item : items) {
    ForEachPart(item, [&](std::string_view name) {
      const auto found = topics.find(AsciiLowered(name));
      if (found == topics.end()) return;
      for (const HelpLink& link : found->second) {
        const bool is_known = std::any_of(links->begin(), links->end(), [&](const HelpLink& other) {
          return other.address == link.address && other.rest == link.rest;
        });
        if (!is_known) links->push_back(link);
      }
    });
  }
}

// "Title;page.htm", as related topics and shortcuts name their pages.
void AddNamedTopics(const std::vector<std::string_view>& items, std::vector<HelpLink>* links) {
  for (const std::string_view item : items) {
    HelpLink link;
    ForEachPart(item, [&](std::string_view part) {
      if (link.title.empty()) {
        link.title = part;
      } else if (link.address.empty()) {
        link.address = part;
      }
    });
    if (link.address.empty()) link.address = link.title;
    if (!link.address.empty()) links->push_back(std::move(link));
  }
}

}  // namespace

bool IsHelpControl(std::string_view class_id) {
  class_id = Trimmed(class_id);
  if (StartsWithIgnoringCase(class_id, "clsid:")) class_id.remove_prefix(6);
  return EqualsIgnoringCase(class_id, "adb880a6-d8ff-11cf-9377-00aa003b7a11") ||
         EqualsIgnoringCase(class_id, "52a2aaae-085d-4187-97ea-8c30db990436") ||
         EqualsIgnoringCase(class_id, "41b23c28-488e-4e5c-ace2-bb0bbabe99e8");
}

ObjectLinks LinksOf(const HelpObject& object, const HelpTopics& topics) {
  ObjectLinks result;
  for (const std::string_view name : {"button", "text"}) {
    std::string_view value = ParamOf(object, name);
    if (value.empty()) continue;
    result.is_visible = true;
    if (StartsWithIgnoringCase(value, "text:")) result.label = Trimmed(value.substr(5));
  }
  if (!ParamOf(object, "bitmap").empty() || !ParamOf(object, "icon").empty()) {
    result.is_visible = true;
  }
  const std::string_view whole = ParamOf(object, "command");
  const std::string_view command = Trimmed(whole.substr(0, whole.find(',')));
  const std::vector<std::string_view> items = ItemsOf(object);
  if (EqualsIgnoringCase(command, "related topics")) {
    AddNamedTopics(items, &result.links);
    if (result.label.empty()) result.label = "Related topics";
  } else if (EqualsIgnoringCase(command, "alink")) {
    AddTopicsOf(items, topics.associations, &result.links);
    if (result.label.empty()) result.label = "Related topics";
  } else if (EqualsIgnoringCase(command, "klink")) {
    AddTopicsOf(items, topics.keywords, &result.links);
    if (result.label.empty()) result.label = "Related topics";
  } else if (EqualsIgnoringCase(command, "shortcut")) {
    // "window class,program,parameters": nothing that a page could start; its name can be told.
    if (!items.empty()) {
      std::string_view program = items[0].substr(std::min(items[0].find(',') + 1, items[0].size()));
      program = Trimmed(program.substr(0, program.find(',')));
      if (result.label.empty()) result.label = program;
    }
  }
  return result;
}

HelpCall ReadHelpCall(std::string_view address) {
  HelpCall call;
  const std::size_t colon = address.find(':');
  if (colon == std::string_view::npos) return call;
  std::string_view code = Trimmed(address.substr(colon + 1));
  const std::size_t dot = code.find('.');
  if (dot == std::string_view::npos) return call;
  call.id = Trimmed(code.substr(0, dot));
  code.remove_prefix(dot + 1);
  const std::size_t open = code.find('(');
  if (open == std::string_view::npos) return call;
  const std::string_view name = Trimmed(code.substr(0, open));
  if (EqualsIgnoringCase(name, "click") || EqualsIgnoringCase(name, "hhclick")) {
    call.kind = HelpCall::Kind::kClick;
    return call;
  }
  if (!EqualsIgnoringCase(name, "textpopup")) return call;
  call.kind = HelpCall::Kind::kPopup;
  code = Trimmed(code.substr(open + 1));
  if (code.empty() || (code[0] != '"' && code[0] != '\'')) return call;
  const char quote = code[0];
  for (std::size_t i = 1; i < code.size() && code[i] != quote; ++i) {
    if (code[i] == '\\' && i + 1 < code.size()) {
      ++i;
      call.text.push_back(code[i] == 'n' ? ' ' : code[i]);
    } else {
      call.text.push_back(code[i]);
    }
  }
  return call;
}

}  // namespace scrivo
