#include "com/win32/enum_variant.h"

#include <algorithm>
#include <memory>
#include <new>
#include <utility>

#include "com/win32/com_ptr.h"

namespace scrivo {
namespace {

// Clones share the items; each has its own place in them.
class EnumVariant : public IEnumVARIANT {
 public:
  using Items = std::shared_ptr<const std::vector<Variant>>;

  EnumVariant(Items items, std::size_t next) : items_(std::move(items)), next_(next) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    if (!object) return E_POINTER;
    *object = id == IID_IUnknown || id == IID_IEnumVARIANT ? this : nullptr;
    if (!*object) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override {
    return static_cast<ULONG>(InterlockedIncrement(&references_));
  }
  ULONG STDMETHODCALLTYPE Release() override {
    const LONG left = InterlockedDecrement(&references_);
    if (left == 0) delete this;
    return static_cast<ULONG>(left);
  }

  HRESULT STDMETHODCALLTYPE Next(ULONG count, VARIANT* values, ULONG* fetched) override {
    if (!values || (!fetched && count != 1)) return E_POINTER;
    ULONG given = 0;
    HRESULT result = S_OK;
    for (; given < count && next_ < items_->size(); ++given, ++next_) {
      VariantInit(&values[given]);
      // The headers forget that the source stays as it is.
      result = VariantCopy(&values[given], const_cast<VARIANT*>(&(*items_)[next_].get()));
      if (FAILED(result)) break;
    }
    if (FAILED(result)) {
      next_ -= given;
      while (given > 0) VariantClear(&values[--given]);
    } else if (given < count) {
      result = S_FALSE;
    }
    if (fetched) *fetched = given;
    return result;
  }
  HRESULT STDMETHODCALLTYPE Skip(ULONG count) override {
    const std::size_t left = items_->size() - next_;
    next_ += std::min<std::size_t>(count, left);
    return count <= left ? S_OK : S_FALSE;
  }
  HRESULT STDMETHODCALLTYPE Reset() override {
    next_ = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT** clone) override {
    if (!clone) return E_POINTER;
    *clone = new (std::nothrow) EnumVariant(items_, next_);
    return *clone ? S_OK : E_OUTOFMEMORY;
  }

 private:
  virtual ~EnumVariant() = default;

  const Items items_;
  std::size_t next_;
  LONG references_ = 1;
};

}  // namespace

Variant EnumeratorOver(std::vector<Variant> items) {
  auto shared = std::make_shared<const std::vector<Variant>>(std::move(items));
  const auto enumerator = ComPtr<IUnknown>::Take(new EnumVariant(std::move(shared), 0));
  return Variant::Unknown(enumerator.get());
}

}  // namespace scrivo
