#include "addin/win32/version_component.h"

#include "com/win32/dispatch_call.h"

namespace scrivo {
namespace {

class VersionComponent : public VersionChecker {
 public:
  explicit VersionComponent(LateBound component) : component_(std::move(component)) {}

  void ProductName(const std::string& name) override {
    component_.Put(L"ProductName", Variant::Text(name));
  }
  void Server(const std::string& host_name) override {
    component_.Put(L"Server", Variant::Text(host_name));
  }
  std::string Result() override { return TextOf(component_.Get(L"Result")); }
  void Check() override { component_.Call(L"Check"); }

 private:
  LateBound component_;
};

}  // namespace

std::shared_ptr<VersionChecker> MakeVersionComponent(const char* prog_id) {
  CLSID class_id;
  if (FAILED(CLSIDFromProgID(Wide(prog_id).c_str(), &class_id))) return nullptr;
  ComPtr<IDispatch> component;
  const HRESULT result =
      CoCreateInstance(class_id, nullptr, CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER, IID_IDispatch,
                       component.PutVoid());
  if (FAILED(result)) RaiseComError(result, prog_id);
  return std::make_shared<VersionComponent>(LateBound(std::move(component)));
}

}  // namespace scrivo
