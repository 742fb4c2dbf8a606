#include "host/session.h"
#include "host/win32/host_object.h"
#include "host/win32/host_world.h"
#include "host/win32/object_model.h"
#include "text/ascii_text.h"

namespace scrivo::host {
namespace {

// Enumerating gives the keys; an item is a value.
class PropertiesObject : public HostCollection {
 public:
  using Pairs = std::vector<std::pair<std::string, std::string>>;

  PropertiesObject(std::shared_ptr<HostWorld> world, Pairs properties)
      : HostCollection(std::move(world), "Properties", 0), properties_(std::move(properties)) {}

 private:
  const DispatchTable& Members() const override { return CollectionMembers(); }
  std::size_t Count() override { return properties_.size(); }
  Variant ItemAt(std::size_t index) override { return Variant::Text(properties_[index].second); }
  Variant Enumerated(std::size_t index) override { return Variant::Text(properties_[index].first); }
  Variant ItemNamed(const std::string& name) override {
    for (const auto& [key, value] : properties_) {
      if (EqualsIgnoringCase(key, name)) return Variant::Text(value);
    }
    throw HostError("There is no property \"" + name + "\".", kBadArgument);
  }

  const Pairs properties_;
};

class MetaTagsObject : public HostCollection {
 public:
  MetaTagsObject(std::shared_ptr<HostWorld> world, std::shared_ptr<SiteFile> file,
                 const std::string& path)
      : HostCollection(std::move(world), "MetaTags", 0),
        file_(std::move(file)),
        names_(MetaTagNames(path)) {}

 private:
  const DispatchTable& Members() const override { return CollectionMembers(); }
  std::size_t Count() override { return names_.size(); }
  Variant ItemAt(std::size_t index) override { return ItemNamed(names_[index]); }
  Variant Enumerated(std::size_t index) override { return Variant::Text(names_[index]); }
  Variant ItemNamed(const std::string& name) override {
    try {
      return Variant::Text(file_->Property(name));
    } catch (const Error& error) {
      throw HostError(error.description, kBadArgument);
    }
  }

  const std::shared_ptr<SiteFile> file_;
  const std::vector<std::string> names_;
};

}  // namespace

Variant PropertiesOf(const std::shared_ptr<HostWorld>& world,
                     std::vector<std::pair<std::string, std::string>> properties) {
  return Variant::Object(MakeObject<PropertiesObject>(world, std::move(properties)).get());
}

Variant MetaTagsOf(const std::shared_ptr<HostWorld>& world, std::shared_ptr<SiteFile> file,
                   const std::string& path) {
  return Variant::Object(MakeObject<MetaTagsObject>(world, std::move(file), path).get());
}

}  // namespace scrivo::host
