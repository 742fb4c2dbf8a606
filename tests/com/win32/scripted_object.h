#pragma once

#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "com/win32/com_ptr.h"
#include "com/win32/dispatch_call.h"

namespace scrivo {

// One call of a scripted object, as it arrived.
struct ScriptedCall {
  WORD flags;
  DISPPARAMS* arguments;
  VARIANT* result;
  EXCEPINFO* exception;

  UINT Count() const { return arguments->cArgs; }
  // An argument, counted from the first.
  VARIANT& Argument(UINT index) const { return arguments->rgvarg[arguments->cArgs - 1 - index]; }
};

// An object that answers calls by name as a test tells it to, right or wrong.
class ScriptedObject : public IDispatch {
 public:
  using Answer = std::function<HRESULT(ScriptedCall& call)>;

  static ComPtr<ScriptedObject> Make() { return ComPtr<ScriptedObject>::Take(new ScriptedObject); }
  // How many of them live.
  static long& Living() {
    static long living = 0;
    return living;
  }

  ScriptedObject& On(const wchar_t* member, Answer answer) {
    names_.push_back(member);
    answers_[static_cast<DISPID>(names_.size())] = std::move(answer);
    return *this;
  }
  ScriptedObject& OnId(DISPID id, Answer answer) {
    answers_[id] = std::move(answer);
    return *this;
  }
  // A member that gives a value of this type; a VT_DISPATCH keeps the object alive.
  ScriptedObject& Gives(const wchar_t* member, const VARIANT& value) {
    return On(member, Giving(value));
  }
  ScriptedObject& GivesObject(const wchar_t* member, const ComPtr<ScriptedObject>& object) {
    return On(member, [object](ScriptedCall& call) {
      call.result->vt = VT_DISPATCH;
      call.result->pdispVal = ComPtr<ScriptedObject>(object).Detach();
      return S_OK;
    });
  }
  ScriptedObject& GivesText(const wchar_t* member, const wchar_t* text) {
    return On(member, [text](ScriptedCall& call) {
      call.result->vt = VT_BSTR;
      call.result->bstrVal = SysAllocString(text);
      return S_OK;
    });
  }
  ScriptedObject& Fails(const wchar_t* member, HRESULT result) {
    return On(member, [result](ScriptedCall&) { return result; });
  }
  static Answer Giving(const VARIANT& value) {
    return [value](ScriptedCall& call) {
      return VariantCopy(call.result, const_cast<VARIANT*>(&value));
    };
  }

  // Forgets every answer, and what they hold.
  void Clear() { answers_.clear(); }
  // Answers for every interface that a scripted object does not have itself.
  ComPtr<IUnknown> other;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    if (id != IID_IUnknown && id != IID_IDispatch) {
      *object = nullptr;
      return other ? other->QueryInterface(id, object) : E_NOINTERFACE;
    }
    *object = static_cast<IDispatch*>(this);
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    *count = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID,
                                          DISPID* ids) override {
    for (std::size_t i = 0; i < names_.size(); ++i) {
      if (names_[i] == names[0]) {
        ids[0] = static_cast<DISPID>(i + 1);
        return S_OK;
      }
    }
    ids[0] = DISPID_UNKNOWN;
    return DISP_E_UNKNOWNNAME;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* arguments,
                                   VARIANT* result, EXCEPINFO* exception, UINT*) override {
    const auto answer = answers_.find(id);
    if (answer == answers_.end()) return DISP_E_MEMBERNOTFOUND;
    ScriptedCall call{flags, arguments, result, exception};
    return answer->second(call);
  }

 private:
  ScriptedObject() { ++Living(); }
  virtual ~ScriptedObject() { --Living(); }

  ULONG references_ = 1;
  std::vector<std::wstring> names_;
  std::map<DISPID, Answer> answers_;
};

// The object as its caller sees it.
inline LateBound Called(const ComPtr<ScriptedObject>& object) {
  return LateBound(ComPtr<IDispatch>::Share(object.get()));
}

// A VARIANT of a type that holds no memory of its own.
inline VARIANT PlainVariant(VARTYPE type, long long bits = 0) {
  VARIANT variant{};
  variant.vt = type;
  variant.llVal = bits;
  return variant;
}

}  // namespace scrivo
