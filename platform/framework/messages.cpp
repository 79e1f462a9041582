#include "framework/application.h"

namespace {

thread_local CMessageQueue* queue_of_thread = nullptr;

}  // namespace

CMessageQueue::~CMessageQueue() = default;

BOOL CMessageQueue::Translate(const MSG&) {
    return FALSE;
}

CMessageQueue* SetMessageQueue(CMessageQueue* queue) {
    CMessageQueue* const before = queue_of_thread;
    queue_of_thread = queue;
    return before;
}

BOOL PeekMessageA(MSG* message, HWND, UINT, UINT, UINT remove) {
    return queue_of_thread && queue_of_thread->Peek(message, (remove & PM_REMOVE) != 0);
}

BOOL TranslateMessage(const MSG* message) {
    return queue_of_thread && queue_of_thread->Translate(*message);
}

LPARAM DispatchMessageA(const MSG* message) {
    if (queue_of_thread) queue_of_thread->Dispatch(*message);
    return 0;
}
