#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <thread>
#include <vector>

#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>

#include "tests/run_program.h"

/// Makes a system call fail for this thread and every program that it starts, with `error` in
/// errno, when its first argument is `leastArgument` or more. False when the system refuses.
inline bool MakeCallFail(long call, int error, uint32_t leastArgument = 0) {
  const auto load = static_cast<uint16_t>(BPF_LD | BPF_W | BPF_ABS);
  const auto ret = static_cast<uint16_t>(BPF_RET | BPF_K);
  const auto equal = static_cast<uint16_t>(BPF_JMP | BPF_JEQ | BPF_K);
  const auto least = static_cast<uint16_t>(BPF_JMP | BPF_JGE | BPF_K);
  sock_filter filter[] = {
      BPF_STMT(load, offsetof(seccomp_data, nr)),
      BPF_JUMP(equal, static_cast<uint32_t>(call), 0, 3),
      BPF_STMT(load, offsetof(seccomp_data, args)),
      BPF_JUMP(least, leastArgument, 0, 1),
      BPF_STMT(ret, SECCOMP_RET_ERRNO | static_cast<uint32_t>(error)),
      BPF_STMT(ret, SECCOMP_RET_ALLOW),
  };
  const sock_fprog program{static_cast<unsigned short>(std::size(filter)), filter};
  return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
         prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

/// Runs the converter while a system call fails.
inline ProgramResult RunWithFailingCall(const std::vector<std::string>& arguments, long call,
                                        int error, uint32_t leastArgument = 0) {
  ProgramResult result;
  std::thread run([&] {
    if (MakeCallFail(call, error, leastArgument)) result = RunConverter(arguments);
  });
  run.join();
  return result;
}
