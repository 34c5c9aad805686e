// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

namespace libnivral {

/// A worker thread with an event that asks it to end. Driven from one owner thread, which calls Stop before
/// it destroys the object: the destructor does not end a running thread.
class CThreadBase {
 public:
  using Function = DWORD (*)(void* argument);

  CThreadBase();
  virtual ~CThreadBase();
  CThreadBase(const CThreadBase&) = delete;
  CThreadBase& operator=(const CThreadBase&) = delete;

  /// Starts the thread on `function`, or on Run when that is null. 1 when it started; 0 when it could not or
  /// when a thread is already running, which is left alone. A body that throws has ended, with 0.
  int Start(Function function, void* argument);

  /// Signals the stop event and waits up to `timeoutMs`; a thread that has not ended by then is terminated.
  /// 1 when there was a thread, else 0.
  int Stop(DWORD timeoutMs);

  /// Manual-reset; the body waits on it beside its own handles.
  HANDLE StopEvent() const { return m_hStopEvent; }

 protected:
  virtual DWORD Run();

 private:
  static DWORD WINAPI Entry(void* self);

  HANDLE m_hThread = nullptr;
  DWORD m_threadId = 0;
  HANDLE m_hStopEvent;
  Function m_function = nullptr;
  void* m_argument = nullptr;
};

}  // namespace libnivral
