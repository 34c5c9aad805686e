// SPDX-License-Identifier: MIT
#pragma once

/// Reports a crash in the place of a program's own abort, of which nothing else tells where it came from.
[[noreturn]] void ReportAbort();
