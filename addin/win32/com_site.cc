#include "addin/win32/com_site.h"

#include "com/win32/dispatch_call.h"
#include "platform/paths.h"
#include "system/error.h"

namespace scrivo {
namespace {

template <typename Wrapper>
std::shared_ptr<Wrapper> WrappedOrNull(LateBound object) {
  return object ? std::make_shared<Wrapper>(std::move(object)) : nullptr;
}

// Whether a host has refused a call for the arguments that it was given, and not for what it was
// to do.
bool IsAboutArguments(const Error& error) {
  return error.number == DISP_E_BADPARAMCOUNT || error.number == DISP_E_NONAMEDARGS ||
         error.number == DISP_E_PARAMNOTFOUND || error.number == kTypeMismatch ||
         error.number == kWrongArgumentCount;
}

// Whether the host could not answer at all, which is not its way of saying that there is none.
bool IsBreakdown(const Error& error) {
  return error.number == kOutOfMemory || error.number == kPermissionDenied ||
         error.number == E_ACCESSDENIED ||
         (error.number < 0 && HRESULT_FACILITY(error.number) == FACILITY_RPC);
}

}  // namespace

LateBound ObjectOrNone(const LateBound& object, const wchar_t* member) {
  try {
    return ObjectOf(object.Get(member));
  } catch (const Error& error) {
    if (IsBreakdown(error)) throw;
    return LateBound();
  }
}

std::string ComFile::Url() { return TextOf(file_.Get(L"Url")); }

std::string ComFile::Extension() { return TextOf(file_.Get(L"Extension")); }

std::string ComFile::Property(const std::string& name) {
  // The page's own meta tags come first; the properties that the host keeps with a file are asked
  // where there are none.
  for (const wchar_t* collection : {L"MetaTags", L"Properties"}) {
    try {
      const Variant value = ItemOf(ObjectOf(file_.Get(collection)), Variant::Text(name));
      if (value.Type() != VT_EMPTY && value.Type() != VT_NULL) return TextOf(value);
    } catch (const Error&) {
      // A missing tag fails in one host and is empty in another.
    }
  }
  throw Error(kInvalidProcedureCall, "Scrivo.Host", "The page has no property " + name);
}

std::shared_ptr<SiteNode> ComFile::NavigationEntry() {
  return WrappedOrNull<ComNode>(ObjectOrNone(file_, L"NavigationNode"));
}

std::string ComFile::Title() { return TextOf(file_.Get(L"Title")); }

SiteFiles ComFolder::Files() {
  return WrappedItems<ComFile, SiteFile>(ObjectOf(folder_.Get(L"Files")));
}

SiteFolders ComFolder::Folders() {
  return WrappedItems<ComFolder, SiteFolder>(ObjectOf(folder_.Get(L"Folders")));
}

std::string ComFolder::LocalPath() {
  // No edition's own name for the path is known.
  std::string address = TextOf(folder_.Get(L"Url"));
  if (address.ends_with('/')) address.pop_back();
  return UrlToPath(address);
}

SiteNodes ComNode::Children() {
  return WrappedItems<ComNode, SiteNode>(ObjectOf(node_.Get(L"Children")));
}

std::shared_ptr<SiteFile> ComNode::File() {
  return WrappedOrNull<ComFile>(ObjectOrNone(node_, L"File"));
}

std::string ComNode::Label() { return TextOf(node_.Get(L"Label")); }

std::string ComNode::Url() { return TextOf(node_.Get(L"Url")); }

bool ComPage::IsModified() { return TruthOf(window_.Get(L"IsDirty")); }

void ComPage::Save(bool overwrite) {
  try {
    window_.Call(L"Save", Variant::Boolean(overwrite));
  } catch (const Error& error) {
    if (!IsAboutArguments(error)) throw;
    // Not every edition is known to take the argument; without it the page is saved in its place,
    // which is the same.
    window_.Call(L"Save");
  }
}

std::string ComWeb::Url() {
  try {
    return TextOf(web_.Get(L"Url"));
  } catch (const Error& error) {
    if (error.number != kObjectDoesNotSupportThis) throw;
    return TextOf(ObjectOf(web_.Get(L"RootFolder")).Get(L"Url"));
  }
}

std::shared_ptr<SiteFolder> ComWeb::BaseFolder() {
  return std::make_shared<ComFolder>(ObjectOf(web_.Get(L"RootFolder")));
}

std::shared_ptr<SiteNode> ComWeb::NavigationRoot() {
  return WrappedOrNull<ComNode>(ObjectOf(web_.Get(L"RootNavigationNode")));
}

std::shared_ptr<SiteNode> ComWeb::HomeNode() {
  return WrappedOrNull<ComNode>(ObjectOrNone(web_, L"HomeNavigationNode"));
}

std::vector<LateBound> ComWeb::Windows() const {
  try {
    return ItemsOf(ObjectOf(web_.Get(L"WebWindows")));
  } catch (const Error& error) {
    if (error.number != kObjectDoesNotSupportThis) throw;
  }
  const LateBound active = ObjectOf(web_.Get(L"ActiveWebWindow"));
  if (!active) return {};
  return {active};
}

scrivo::OpenPages ComWeb::OpenPages() {
  scrivo::OpenPages pages;
  for (const LateBound& window : Windows()) {
    for (auto& page : WrappedItems<ComPage, OpenPage>(ObjectOf(window.Get(L"PageWindows")))) {
      pages.push_back(std::move(page));
    }
  }
  return pages;
}

void ComWeb::Refresh() { web_.Call(L"Refresh"); }

}  // namespace scrivo
