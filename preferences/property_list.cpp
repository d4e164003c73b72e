#include "preferences/property_list.h"

namespace horalo::plist {
namespace {

template <typename T>
const T* contentAs(const Value& value) {
  return std::get_if<T>(&value.content);
}

}  // namespace

std::optional<bool> Value::boolean() const {
  if (const auto* value = contentAs<bool>(*this)) return *value;
  return std::nullopt;
}

std::optional<double> Value::number() const {
  if (const auto* value = contentAs<double>(*this)) return *value;
  if (const auto* value = contentAs<std::int64_t>(*this)) return static_cast<double>(*value);
  if (const auto* value = contentAs<std::uint64_t>(*this)) return static_cast<double>(*value);
  return std::nullopt;
}

const std::string* Value::string() const {
  return contentAs<std::string>(*this);
}

const std::string* Value::data() const {
  const auto* data = contentAs<Data>(*this);
  return data != nullptr ? &data->bytes : nullptr;
}

const Array* Value::array() const {
  return contentAs<Array>(*this);
}

const Dictionary* Value::dictionary() const {
  return contentAs<Dictionary>(*this);
}

}  // namespace horalo::plist
