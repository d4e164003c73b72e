#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QProcess>
#include <QTimer>
#include <optional>
#include <vector>

#include "app/command_server.h"
#include "app/single_instance.h"
#include "tests/fakes/temporary_folder.h"

namespace horalo {
namespace {

struct Result {
  int status = -1;
  QByteArray out;
  QByteArray err;
};

QProcessEnvironment environmentWith(const TemporaryFolder& folder) {
  auto environment = QProcessEnvironment::systemEnvironment();
  environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), folder.path());
  environment.insert(QStringLiteral("DISPLAY"), QStringLiteral(":77.0"));
  return environment;
}

// Runs the command while the event loop goes on, so that a server in this process can answer.
Result run(const QString& program, const QStringList& words, const TemporaryFolder& folder) {
  QProcess process;
  process.setProcessEnvironment(environmentWith(folder));
  QEventLoop loop;
  QObject::connect(&process, &QProcess::finished, &loop, &QEventLoop::quit);
  QObject::connect(&process, &QProcess::errorOccurred, &loop, &QEventLoop::quit);
  process.start(program, words);
  loop.exec();
  return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
          process.readAllStandardOutput(), process.readAllStandardError()};
}

class AgentCommandsTest : public testing::Test {
 protected:
  Result run(const QStringList& words) {
    return horalo::run(QStringLiteral(HORALO_PROGRAM), words, folder_);
  }

  // Becomes the running program, which does not serve yet.
  void becomeRunning() {
    auto instance = SingleInstance::acquire(instanceAddressIn(folder_.path().toStdString(), "77"));
    ASSERT_TRUE(instance);
    instance_.emplace(std::move(*instance));
  }

  // Becomes the running program, which answers `text` to everything.
  void answerWith(const std::string& text) {
    becomeRunning();
    server_.emplace(instance_->socket(),
                    [this, text](const std::string& command, const CommandServer::Answer& answer) {
                      commands_.push_back(command);
                      answer(text);
                      return true;
                    });
  }

  TemporaryFolder folder_;
  std::optional<SingleInstance> instance_;
  std::optional<CommandServer> server_;
  std::vector<std::string> commands_;
};

const QStringList kCommands{QStringLiteral("toggle"),        QStringLiteral("show"),
                            QStringLiteral("hide"),          QStringLiteral("settings"),
                            QStringLiteral("check-updates"), QStringLiteral("quit"),
                            QStringLiteral("status")};

TEST_F(AgentCommandsTest, WithoutARunningProgramSayOneLineAndExitWith3) {
  for (const QString& command : kCommands) {
    const Result result = run({command});
    EXPECT_EQ(result.status, 3) << command.toStdString();
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "horalo: not running\n");
  }
  const Result json = run({QStringLiteral("status"), QStringLiteral("--json")});
  EXPECT_EQ(json.status, 3);
  EXPECT_EQ(json.out, "{\"running\":false}\n");
}

TEST_F(AgentCommandsTest, ReachTheRunningProgram) {
  answerWith("");
  std::vector<std::string> expected;
  for (const QString& command : kCommands) {
    if (command == QStringLiteral("quit")) continue;  // this process does not end
    const Result result = run({command});
    EXPECT_EQ(result.status, 0) << command.toStdString();
    EXPECT_EQ(result.out + result.err, "");
    expected.push_back(command.toStdString());
  }
  EXPECT_EQ(commands_, expected);
}

TEST_F(AgentCommandsTest, PrintWhatTheStatusIs) {
  answerWith("{\"running\":true}\n");
  const Result result = run({QStringLiteral("status"), QStringLiteral("--json")});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out, "{\"running\":true}\n");
  EXPECT_EQ(commands_, std::vector<std::string>{"status --json"});
}

TEST_F(AgentCommandsTest, SayWhenAnotherDisplaysProgramIsNotMeant) {
  const auto other = SingleInstance::acquire(instanceAddressIn(folder_.path().toStdString(), "78"));
  ASSERT_TRUE(other);
  EXPECT_EQ(run({QStringLiteral("toggle")}).status, 3);
}

TEST_F(AgentCommandsTest, TellWrongUsage) {
  answerWith("");
  for (const QString& command : kCommands) {
    const Result result = run({command, QStringLiteral("now")});
    EXPECT_EQ(result.status, 2) << command.toStdString();
    EXPECT_EQ(result.err.count('\n'), 1);
  }
  EXPECT_EQ(run({QStringLiteral("status"), QStringLiteral("--json"), QStringLiteral("x")}).status,
            2);
  EXPECT_EQ(run({QStringLiteral("toggle"), QStringLiteral("--json")}).status, 2);
  EXPECT_TRUE(commands_.empty());
}

TEST_F(AgentCommandsTest, ExplainThemselves) {
  for (const QString& command : kCommands) {
    const Result result = run({command, QStringLiteral("--help")});
    EXPECT_EQ(result.status, 0);
    EXPECT_TRUE(result.out.startsWith("Usage: horalo " + command.toUtf8())) << result.out.data();
  }
}

// A program that hangs: it holds the lock and never reads its socket.
TEST_F(AgentCommandsTest, DoNotWaitForeverForAHangingProgram) {
  becomeRunning();
  QElapsedTimer clock;
  clock.start();
  const Result start = run({});
  EXPECT_EQ(start.status, 1);
  EXPECT_EQ(start.err, "horalo: the running program does not answer\n");
  EXPECT_LT(clock.elapsed(), 2000);
}

TEST_F(AgentCommandsTest, ASecondStartShowsThePanelOfTheFirst) {
  answerWith("");
  EXPECT_EQ(run({}).status, 0);
  EXPECT_EQ(commands_, std::vector<std::string>{"show"});
}

TEST_F(AgentCommandsTest, ASecondStartInTheBackgroundShowsNothing) {
  answerWith("");
  EXPECT_EQ(run({QStringLiteral("--background")}).status, 0);
  EXPECT_TRUE(commands_.empty());
}

// A copy of the command with a stand-in for the program beside it, or in the folder for programs
// that nobody types.
class StartTest : public AgentCommandsTest {
 protected:
  void installAgent(const QString& path) {
    QFile agent(path);
    ASSERT_TRUE(agent.open(QIODevice::WriteOnly));
    agent.write("#!/bin/sh\necho \"agent of $$: $*\"\nexit 42\n");
    agent.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  }

  QString installCommand() {
    QDir(folder_.path()).mkpath(QStringLiteral("bin"));
    const QString path = folder_.path(QStringLiteral("bin/horalo"));
    EXPECT_TRUE(QFile::copy(QStringLiteral(HORALO_PROGRAM), path));
    return path;
  }
};

TEST_F(StartTest, BecomesTheProgramBesideTheCommand) {
  const QString command = installCommand();
  installAgent(folder_.path(QStringLiteral("bin/horalo-agent")));
  const Result plain = horalo::run(command, {}, folder_);
  EXPECT_EQ(plain.status, 42);
  EXPECT_TRUE(plain.out.endsWith(": \n")) << plain.out.data();
  const Result background = horalo::run(command, {QStringLiteral("--background")}, folder_);
  EXPECT_TRUE(background.out.endsWith(": --background\n")) << background.out.data();
}

TEST_F(StartTest, BecomesTheProgramInTheLibraryFolder) {
  const QString command = installCommand();
  QDir(folder_.path()).mkpath(QStringLiteral("lib/horalo"));
  installAgent(folder_.path(QStringLiteral("lib/horalo/horalo-agent")));
  EXPECT_EQ(horalo::run(command, {}, folder_).status, 42);
}

TEST_F(StartTest, SaysWhatItCannotStart) {
  const Result result = horalo::run(installCommand(), {}, folder_);
  EXPECT_EQ(result.status, 1);
  EXPECT_TRUE(result.err.startsWith("horalo: cannot start ")) << result.err.data();
  EXPECT_EQ(result.err.count('\n'), 1);
}

}  // namespace
}  // namespace horalo
