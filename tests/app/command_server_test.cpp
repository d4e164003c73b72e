#include "app/command_server.h"

#include <gtest/gtest.h>
#include <sys/socket.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <QTemporaryDir>
#include <future>
#include <vector>

#include "app/instance_client.h"
#include "app/instance_socket.h"
#include "app/single_instance.h"

namespace horalo {
namespace {

using namespace std::chrono_literals;
using Outcome = InstanceReply::Outcome;

class CommandServerTest : public testing::Test {
 protected:
  CommandServerTest()
      : address_(instanceAddressIn(folder_.path().toStdString(), "7")),
        instance_(SingleInstance::acquire(address_)) {}

  void serve(CommandServer::Handler handler) {
    server_.emplace(instance_->socket(), std::move(handler));
  }

  // Runs the event loop until a client, in a thread of its own, has its answer.
  InstanceReply reply(const std::string& command, std::chrono::milliseconds limit = 10s) {
    QEventLoop loop;
    auto answer = std::async(std::launch::async, [&] {
      auto result = ask(address_, command, limit);
      QMetaObject::invokeMethod(
          &loop, [&] { loop.quit(); }, Qt::QueuedConnection);
      return result;
    });
    loop.exec();
    return answer.get();
  }

  QTemporaryDir folder_;
  InstanceAddress address_;
  std::optional<SingleInstance> instance_;
  std::optional<CommandServer> server_;
};

TEST_F(CommandServerTest, CarriesOutACommandAndAnswers) {
  std::vector<std::string> commands;
  serve([&](const std::string& command, const CommandServer::Answer& answer) {
    commands.push_back(command);
    answer(command == "status" ? "all well\n" : "");
    return true;
  });
  const auto toggled = reply("toggle");
  EXPECT_EQ(toggled.outcome, Outcome::answered);
  EXPECT_EQ(toggled.text, "");
  const auto status = reply("status");
  EXPECT_EQ(status.outcome, Outcome::answered);
  EXPECT_EQ(status.text, "all well\n");
  EXPECT_EQ(commands, (std::vector<std::string>{"toggle", "status"}));
}

TEST_F(CommandServerTest, AnAnswerMayComeLater) {
  serve([](const std::string&, const CommandServer::Answer& answer) {
    QMetaObject::invokeMethod(
        QCoreApplication::instance(), [answer] { answer("mapped\n"); }, Qt::QueuedConnection);
    return true;
  });
  EXPECT_EQ(reply("show").text, "mapped\n");
}

TEST_F(CommandServerTest, SaysWhenItDoesNotKnowACommand) {
  serve([](const std::string&, const CommandServer::Answer&) { return false; });
  EXPECT_EQ(reply("dance").outcome, Outcome::noAnswer);
}

TEST_F(CommandServerTest, ALineWithoutEndIsNoCommand) {
  int commands = 0;
  serve([&](const std::string&, const CommandServer::Answer& answer) {
    ++commands;
    answer("");
    return true;
  });
  EXPECT_EQ(reply(std::string(1000, 'x')).outcome, Outcome::noAnswer);
  EXPECT_EQ(commands, 0);
  EXPECT_EQ(reply("toggle").outcome, Outcome::answered);
}

TEST_F(CommandServerTest, AnAnswerToAClientThatLeftGoesNowhere) {
  CommandServer::Answer kept;
  serve([&](const std::string& command, const CommandServer::Answer& answer) {
    if (command == "show") {
      kept = answer;
    } else {
      answer("");
    }
    return true;
  });
  EXPECT_EQ(reply("show", 20ms).outcome, Outcome::noAnswer);
  ASSERT_TRUE(kept);
  kept("too late\n");
  EXPECT_EQ(reply("hide").outcome, Outcome::answered);
  server_.reset();
  kept("even later\n");
}

TEST_F(CommandServerTest, AProgramThatDoesNotServeIsToldApartFromNone) {
  EXPECT_EQ(ask(address_, "toggle", 20ms).outcome, Outcome::noAnswer);
  instance_.reset();
  EXPECT_EQ(ask(address_, "toggle", 20ms).outcome, Outcome::notRunning);
  EXPECT_EQ(askToQuit(address_, 20ms).outcome, Outcome::notRunning);
}

}  // namespace
}  // namespace horalo
