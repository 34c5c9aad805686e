// SPDX-License-Identifier: MIT
#pragma once

/// Makes a crash on any thread print its code and stack as module+offset and end the process with exit code
/// 99, which an unhandled exception under Wine does not do reliably.
void InstallCrashReport();

/// Does the same in the place of a module's own abort, of which nothing else tells where it came from.
[[noreturn]] void ReportAbort();
