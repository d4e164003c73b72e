#include "app/update/updater_process.h"

#include <signal.h>
#include <spawn.h>
#include <sys/socket.h>
#include <unistd.h>

#include <utility>

namespace horalo {

std::optional<UpdaterLink> startUpdaterProcess(const std::filesystem::path& program,
                                               const char* const* arguments) {
  int sockets[2];
  if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, sockets) != 0) return std::nullopt;
  FileDescriptor ours(sockets[0]);
  const FileDescriptor theirs(sockets[1]);

  posix_spawn_file_actions_t files;
  posix_spawn_file_actions_init(&files);
  posix_spawn_file_actions_adddup2(&files, theirs.get(), STDIN_FILENO);
  posix_spawnattr_t attributes;
  posix_spawnattr_init(&attributes);
  posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGMASK);
  posix_spawnattr_setpgroup(&attributes, 0);
  sigset_t none;
  sigemptyset(&none);
  posix_spawnattr_setsigmask(&attributes, &none);

  int process = 0;
  const int failed = posix_spawn(&process, program.c_str(), &files, &attributes,
                                 const_cast<char* const*>(arguments), environ);
  posix_spawnattr_destroy(&attributes);
  posix_spawn_file_actions_destroy(&files);
  if (failed != 0) return std::nullopt;
  return UpdaterLink{std::move(ours), process};
}

}  // namespace horalo
