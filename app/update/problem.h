#pragma once

#include <QString>
#include <variant>

namespace horalo {

// Why a check or an update ended early, for the person in front of the window.
struct Problem {
  QString message;  // what happened, one line
  QString advice;   // what to do about it
};

// What a step comes to: its result, or why there is none.
template <typename Result>
using Outcome = std::variant<Result, Problem>;

namespace problem {

Problem badBundle(const QString& detail);
Problem unreachable(const QString& detail);
Problem tooSlow();
Problem untrustedServer(const QString& detail);
Problem refusedByServer(int status);
Problem badRedirect();
Problem tooLong();
Problem notAFeed();
Problem forgedFeed();
Problem brokenFeed();
Problem outdatedFeed();
Problem wrongLength();
Problem forgedArchive();
Problem badArchive(const QString& detail);
Problem wrongBundle(const QString& detail);
Problem noSpace(const QString& folder);
Problem notWritable(const QString& folder);
Problem cannotExchange(const QString& folder);
Problem alreadyReplaced();
Problem didNotStart(const QString& newVersion, const QString& oldVersion);
Problem couldNotReturn(const QString& bundle, const QString& oldBundle);

}  // namespace problem
}  // namespace horalo
