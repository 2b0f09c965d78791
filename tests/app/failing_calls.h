#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string>
#include <thread>
#include <vector>

#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>

#include "tests/run_program.h"

/// A system call that fails, with `error` in errno.
struct FailingCall {
  long number;
  int error;
  uint32_t leastFirst = 0;  ///< only where its first and its third argument are at least these
  uint32_t leastThird = 0;
};

/// Makes a system call fail for this thread and every program that it starts. False when the system
/// refuses.
inline bool MakeCallFail(const FailingCall& call) {
  const auto load = static_cast<uint16_t>(BPF_LD | BPF_W | BPF_ABS);
  const auto ret = static_cast<uint16_t>(BPF_RET | BPF_K);
  const auto equal = static_cast<uint16_t>(BPF_JMP | BPF_JEQ | BPF_K);
  const auto least = static_cast<uint16_t>(BPF_JMP | BPF_JGE | BPF_K);
  sock_filter filter[] = {
      BPF_STMT(load, offsetof(seccomp_data, nr)),
      BPF_JUMP(equal, static_cast<uint32_t>(call.number), 0, 5),
      BPF_STMT(load, offsetof(seccomp_data, args[0])),
      BPF_JUMP(least, call.leastFirst, 0, 3),
      BPF_STMT(load, offsetof(seccomp_data, args[2])),
      BPF_JUMP(least, call.leastThird, 0, 1),
      BPF_STMT(ret, SECCOMP_RET_ERRNO | static_cast<uint32_t>(call.error)),
      BPF_STMT(ret, SECCOMP_RET_ALLOW),
  };
  const sock_fprog program{static_cast<unsigned short>(std::size(filter)), filter};
  return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
         prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

/// Runs the converter while a system call fails.
inline ProgramResult RunWithFailingCall(const std::vector<std::string>& arguments,
                                        const FailingCall& call) {
  ProgramResult result;
  std::thread run([&] {
    if (MakeCallFail(call)) result = RunConverter(arguments);
  });
  run.join();
  return result;
}
