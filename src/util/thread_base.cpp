// SPDX-License-Identifier: MIT
#include "util/thread_base.h"

#include "util/contained.h"

namespace libnivral {

CThreadBase::CThreadBase() : m_hStopEvent(CreateEventW(nullptr, TRUE, FALSE, nullptr)) {
}

CThreadBase::~CThreadBase() {
  CloseHandle(m_hStopEvent);
}

int CThreadBase::Start(Function function, void* argument) {
  if (m_hThread) return 0;
  m_function = function;
  m_argument = argument;
  ResetEvent(m_hStopEvent);
  m_hThread = CreateThread(nullptr, 0, &CThreadBase::Entry, this, 0, &m_threadId);
  return m_hThread ? 1 : 0;
}

int CThreadBase::Stop(DWORD timeoutMs) {
  if (!m_hThread) return 0;
  SetEvent(m_hStopEvent);
  if (WaitForSingleObject(m_hThread, timeoutMs) != WAIT_OBJECT_0) TerminateThread(m_hThread, 0xFFFFFFFF);
  CloseHandle(m_hThread);
  m_hThread = nullptr;
  m_threadId = 0;
  m_function = nullptr;
  m_argument = nullptr;
  return 1;
}

DWORD CThreadBase::Run() {
  return 0;
}

DWORD WINAPI CThreadBase::Entry(void* self) {
  auto* thread = static_cast<CThreadBase*>(self);
  DWORD result = 0;
  Contained("CThreadBase::Entry",
            [&] { result = thread->m_function ? thread->m_function(thread->m_argument) : thread->Run(); });
  return result;
}

}  // namespace libnivral
