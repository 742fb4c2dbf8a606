#include "checker/component_finder.h"

#include <algorithm>
#include <utility>

#include "text/ascii_text.h"

namespace scrivo {
namespace {

struct KnownComponent {
  std::string_view bot;  // in small letters
  std::string_view name;
  bool is_form;  // stands within the form that it handles
};

constexpr KnownComponent kComponents[] = {
    {"search", "search form", true},
    {"saveresults", "form", true},
    {"saveasasp", "form", true},
    {"savedatabase", "form", true},
    {"registration", "registration form", true},
    {"discussion", "discussion form", true},
    {"confirmationfield", "form's confirmation", false},
    {"hitcounter", "hit counter", false},
    {"databaseregionstart", "database results", false},
    {"formmail", "form", true},
};

// Whether a form with this action needs the server that the web came from.
bool NeedsServer(std::string_view action) {
  action = Trimmed(action);
  if (action.empty() || action[0] == '#') return false;
  const std::size_t colon = action.find_first_of(":/\\?#");
  return colon == std::string_view::npos || action[colon] != ':';
}

}  // namespace

void ComponentFinder::See(const HtmlToken& token) {
  if (token.Starts("form")) StartForm(token);
  if (token.Ends("form")) EndForm();
  if (token.kind != HtmlToken::Kind::kOther || !token.content.starts_with("<!--")) return;
  const std::string_view comment = Trimmed(token.content.substr(4));
  if (StartsWithIgnoringCase(comment, "webbot")) SeeComponent(comment.substr(6), token.offset);
}

std::vector<ServerComponent> ComponentFinder::Take() {
  EndForm();
  std::stable_sort(
      found_.begin(), found_.end(),
      [](const ServerComponent& a, const ServerComponent& b) { return a.offset < b.offset; });
  return std::move(found_);
}

void ComponentFinder::StartForm(const HtmlToken& token) {
  EndForm();
  form_is_open_ = true;
  form_offset_ = token.offset;
  // A form that a component holds is the component's own.
  if (!is_inside_ && NeedsServer(token.Attribute("action").value_or(""))) form_name_ = "form";
}

void ComponentFinder::EndForm() {
  if (!form_name_.empty()) found_.push_back({form_offset_, form_name_});
  form_is_open_ = false;
  form_name_.clear();
}

void ComponentFinder::SeeComponent(std::string_view attributes, std::size_t offset) {
  std::string bot;
  bool starts = false, ends = false;
  HtmlAttribute attribute;
  while (NextAttribute(&attributes, &attribute)) {
    if (EqualsIgnoringCase(attribute.name, "bot") && bot.empty())
      bot = AsciiLowered(attribute.value);
    starts = starts || EqualsIgnoringCase(attribute.name, "startspan");
    ends = ends || EqualsIgnoringCase(attribute.name, "endspan");
  }
  is_inside_ = false;
  if (ends) return;
  const auto known =
      std::find_if(std::begin(kComponents), std::end(kComponents),
                   [&](const KnownComponent& component) { return component.bot == bot; });
  if (known == std::end(kComponents)) return;
  is_inside_ = starts;
  if (known->is_form && form_is_open_) {
    form_name_ = known->name;
  } else {
    found_.push_back({offset, std::string(known->name)});
  }
}

}  // namespace scrivo
