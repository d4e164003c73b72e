#include "platform/none/none_pasteboard.h"

#include <QMetaObject>
#include <QObject>

namespace horalo {
namespace {

class EmptyRead final : public Pasteboard::Read {
 public:
  explicit EmptyRead(Pasteboard::Answer answer) {
    QMetaObject::invokeMethod(
        &context_, [answer = std::move(answer)] { answer(std::nullopt); }, Qt::QueuedConnection);
  }

 private:
  QObject context_;  // with it goes the answer that has not come yet
};

}  // namespace

std::unique_ptr<Pasteboard::Read> NonePasteboard::read(const ReadLimits&, Answer answer) {
  return std::make_unique<EmptyRead>(std::move(answer));
}

}  // namespace horalo
