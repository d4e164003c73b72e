#include "app/update/problem.h"

namespace horalo::problem {
namespace {

QString nothingChanged(const QString& advice) {
  return QStringLiteral("Your copy of Horalo is unchanged. ") + advice;
}

const auto kForged = QStringLiteral(
    "Perhaps it was damaged on the way. Try again on another network; if that does not help, "
    "download Horalo again from where you first got it.");

}  // namespace

Problem badBundle(const QString& detail) {
  return {QStringLiteral("This copy of Horalo cannot be updated"),
          detail + QStringLiteral(" Download Horalo again and put it in the place of this copy.")};
}

Problem unreachable(const QString& detail) {
  return {QStringLiteral("The update server could not be reached"),
          QStringLiteral("Check the connection to the network and try again. (%1)").arg(detail)};
}

Problem tooSlow() {
  return {QStringLiteral("The update server took too long to answer"),
          QStringLiteral("Check the connection to the network and try again later.")};
}

Problem untrustedServer(const QString& detail) {
  return {
      QStringLiteral("The update server could not be trusted"),
      QStringLiteral("Check the date of this computer, and whether the network asks you to sign "
                     "in first. (%1)")
          .arg(detail)};
}

Problem refusedByServer(int status) {
  return {QStringLiteral("The update server has no answer (error %1)").arg(status),
          QStringLiteral("Try again later.")};
}

Problem badRedirect() {
  return {QStringLiteral("The update server sent Horalo to an unsafe place"),
          nothingChanged(QStringLiteral("Try again on another network."))};
}

Problem tooLong() {
  return {QStringLiteral("The update server sent far too much"),
          nothingChanged(QStringLiteral("Try again later, or on another network."))};
}

Problem notAFeed() {
  return {QStringLiteral("The update server sent something other than a list of versions"),
          QStringLiteral("Some networks answer in its place until you sign in: open a web page, "
                         "then try again.")};
}

Problem forgedFeed() {
  return {QStringLiteral("The list of versions does not come from Horalo's makers"),
          nothingChanged(kForged)};
}

Problem brokenFeed() {
  return {QStringLiteral("The list of versions cannot be read"),
          nothingChanged(QStringLiteral("Try again later."))};
}

Problem outdatedFeed() {
  return {QStringLiteral("The list of versions is older than one that was here before"),
          nothingChanged(QStringLiteral("Try again later, or on another network."))};
}

Problem wrongLength() {
  return {QStringLiteral("The download is not complete"),
          nothingChanged(QStringLiteral("Check the connection to the network and try again."))};
}

Problem forgedArchive() {
  return {QStringLiteral("The download does not come from Horalo's makers"),
          nothingChanged(kForged)};
}

Problem badArchive(const QString& detail) {
  return {
      QStringLiteral("The new version cannot be unpacked"),
      nothingChanged(QStringLiteral("Try again when a newer version is out. (%1)").arg(detail))};
}

Problem wrongBundle(const QString& detail) {
  return {
      QStringLiteral("The download is not the version that was announced"),
      nothingChanged(QStringLiteral("Try again when a newer version is out. (%1)").arg(detail))};
}

Problem noSpace(const QString& folder) {
  return {QStringLiteral("There is not enough space for the new version"),
          nothingChanged(QStringLiteral("Make room on the disk of %1 and try again.").arg(folder))};
}

Problem notWritable(const QString& folder) {
  return {QStringLiteral("Horalo may not be replaced where it is"),
          QStringLiteral("You cannot write to %1. Move Horalo.app to a folder of your own, such as "
                         "your home, start it from there and try again.")
              .arg(folder)};
}

Problem cannotExchange(const QString& folder) {
  return {
      QStringLiteral("Horalo cannot be replaced safely where it is"),
      nothingChanged(QStringLiteral("The file system of %1 cannot exchange two folders in one "
                                    "step. Move Horalo.app to another disk, start it from there "
                                    "and try again.")
                         .arg(folder))};
}

Problem alreadyReplaced() {
  return {QStringLiteral("Another version is already in the place of this one"),
          QStringLiteral("Quit Horalo and start it again to use it.")};
}

Problem didNotStart(const QString& newVersion, const QString& oldVersion) {
  return {QStringLiteral("Horalo %1 did not start").arg(newVersion),
          QStringLiteral("Version %1 was put back and runs again. Automatic checks will offer the "
                         "next version.")
              .arg(oldVersion)};
}

Problem couldNotReturn(const QString& bundle, const QString& oldBundle) {
  return {QStringLiteral("The new version of Horalo did not start"),
          QStringLiteral("The old one could not be put back by itself. Delete %1 and rename %2 to "
                         "take its place.")
              .arg(bundle, oldBundle)};
}

}  // namespace horalo::problem
