#include "host/win32/addin_list.h"

#include <algorithm>

#include "com/win32/variant.h"
#include "host/session.h"
#include "host/win32/host_world.h"
#include "host/win32/object_model.h"
#include "text/ascii_text.h"

namespace scrivo::host {

const GUID kAddinInterfaceId = {
    0xB65AD801, 0xABAF, 0x11D0, {0xBB, 0x8B, 0x00, 0xA0, 0xC9, 0x0F, 0x27, 0x44}};

namespace {

// The array of extra data that every call carries: empty.
class CustomData {
 public:
  CustomData() : array_(SafeArrayCreateVector(VT_VARIANT, 1, 0)) {}
  CustomData(const CustomData&) = delete;
  CustomData& operator=(const CustomData&) = delete;
  ~CustomData() { SafeArrayDestroy(array_); }
  SAFEARRAY** get() { return &array_; }

 private:
  SAFEARRAY* array_;
};

std::string Hexadecimal(HRESULT code) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  std::string text = "0x";
  for (int shift = 28; shift >= 0; shift -= 4) {
    text += kDigits[(static_cast<std::uint32_t>(code) >> shift) & 0xF];
  }
  return text;
}

// What a failure to create a class means to a person.
std::string ReasonOf(HRESULT code) {
  switch (code) {
    case REGDB_E_CLASSNOTREG:
    case CO_E_CLASSSTRING:
      return "its class is not registered for programs of this kind (32 or 64 bit)";
    case E_NOINTERFACE:
      return "it is not an add-in";
    case CO_E_DLLNOTFOUND:
      return "its library is missing or cannot be loaded";
    default:
      if (code == HRESULT_FROM_WIN32(ERROR_MOD_NOT_FOUND) ||
          code == HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND)) {
        return "its library is missing or cannot be loaded";
      }
      return "error " + Hexadecimal(code);
  }
}

CLSID ClassOf(const std::string& prog_id, HRESULT* result) {
  CLSID id{};
  *result = CLSIDFromProgID(Wide(prog_id).c_str(), &id);
  return id;
}

std::string ClassText(const std::string& prog_id) {
  HRESULT result;
  const CLSID id = ClassOf(prog_id, &result);
  wchar_t text[64];
  if (FAILED(result) || StringFromGUID2(id, text, 64) == 0) return "";
  return Narrow(std::wstring_view(text));
}

[[noreturn]] void Fail(Addin* addin, const std::string& reason) {
  addin->problem = "The add-in " + addin->entry.name + " cannot be loaded: " + reason + ".";
  throw HostError(addin->problem);
}

}  // namespace

std::shared_ptr<Addin> AddinList::Find(const std::string& prog_id) const {
  for (const auto& addin : addins_) {
    if (EqualsIgnoringCase(addin->entry.prog_id, prog_id)) return addin;
  }
  return nullptr;
}

void AddinList::Read() {
  std::vector<std::shared_ptr<Addin>> addins;
  for (AddinEntry& entry : ReadAddinEntries()) {
    std::shared_ptr<Addin> addin = Find(entry.prog_id);
    if (!addin) addin = std::make_shared<Addin>();
    addin->entry = std::move(entry);
    addin->class_id = ClassText(addin->entry.prog_id);
    addins.push_back(std::move(addin));
  }
  for (const auto& addin : addins_) {
    if (addin->IsConnected() && std::find(addins.begin(), addins.end(), addin) == addins.end()) {
      addins.push_back(addin);
    }
  }
  addins_ = std::move(addins);
}

void AddinList::ConnectAtStart(LONG mode) {
  const auto addins = addins_;
  std::vector<std::shared_ptr<Addin>> loaded;
  for (const auto& addin : addins) {
    if (!addin->entry.LoadsAtStart() || addin->connected) continue;
    try {
      Connect(addin, mode);
      loaded.push_back(addin);
    } catch (const Error&) {
      // It is kept as the add-in's problem.
    }
  }
  for (const auto& addin : loaded) {
    CustomData custom;
    if (addin->connected) ComPtr(addin->connected)->OnStartupComplete(custom.get());
  }
}

void AddinList::Connect(const std::shared_ptr<Addin>& addin, LONG mode) {
  if (addin->connected) return;
  addin->problem.clear();
  HRESULT result;
  const CLSID id = ClassOf(addin->entry.prog_id, &result);
  if (FAILED(result)) Fail(addin.get(), ReasonOf(result));
  ComPtr<IUnknown> created;
  result = CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown, created.PutVoid());
  if (FAILED(result)) Fail(addin.get(), ReasonOf(result));
  const auto entry_point = created.Query<AddinInterface>(kAddinInterfaceId);
  if (!entry_point) Fail(addin.get(), ReasonOf(E_NOINTERFACE));
  const Variant instance = ComAddInOf(world_.shared_from_this(), addin);
  const auto application = world_.Application();
  // It counts as connected from here on: it may ask while it is being told.
  addin->connected = entry_point;
  CustomData custom;
  result =
      entry_point->OnConnection(application.get(), mode, instance.get().pdispVal, custom.get());
  if (result != S_OK) {
    addin->connected.Reset();
    addin->object.Reset();
    Fail(addin.get(), "it refuses the connection with " + ReasonOf(result));
  }
  TellUpdate();
}

void AddinList::ConnectOnDemand(const std::string& prog_id) {
  const std::shared_ptr<Addin> addin = Find(prog_id);
  if (!addin || addin->connected) return;
  try {
    Connect(addin, kAfterStartup);
  } catch (const Error&) {
    // The press goes on without it, as if nobody listened.
  }
}

void AddinList::Disconnect(const std::shared_ptr<Addin>& addin, LONG mode) {
  if (!addin->connected) return;
  const ComPtr<AddinInterface> entry_point = std::move(addin->connected);
  CustomData custom;
  entry_point->OnDisconnection(mode, custom.get());
  addin->object.Reset();
  TellUpdate();
}

void AddinList::DisconnectAll() {
  const auto addins = addins_;
  for (const auto& addin : addins) {
    CustomData custom;
    if (addin->connected) ComPtr(addin->connected)->OnBeginShutdown(custom.get());
  }
  for (const auto& addin : addins) Disconnect(addin, kHostShutdown);
}

void AddinList::TellUpdate() {
  const auto addins = addins_;
  for (const auto& addin : addins) {
    CustomData custom;
    if (addin->connected) ComPtr(addin->connected)->OnAddInsUpdate(custom.get());
  }
}

}  // namespace scrivo::host
