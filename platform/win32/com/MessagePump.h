#pragma once
// A host's UI thread between calls: the messages waiting for it are dispatched.
namespace nv::com {

// Dispatches every message waiting for this thread; a quit request is put back for the
// loop that owns it. Returns how many were dispatched.
int PumpWaitingMessages();

}  // namespace nv::com
