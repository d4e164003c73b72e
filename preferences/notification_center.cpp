#include "preferences/notification_center.h"

#include <utility>

namespace horalo {

void NotificationCenter::observe(std::string_view name, Observer observer) {
  observers_[std::string(name)].push_back(std::move(observer));
}

void NotificationCenter::post(std::string_view name, const std::any& object) {
  const auto found = observers_.find(name);
  if (found == observers_.end()) return;
  // An observer may add others, which hear of the next post.
  const auto observers = found->second;
  for (const Observer& observer : observers) observer(object);
}

}  // namespace horalo
