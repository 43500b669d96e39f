// The guard around the first pass through a function-local static, for the whole module.
//
// The C++ runtime's own guard waits on a mutex of the threading library, and its first use on a
// thread makes that library build a record for the thread (an event, a duplicated thread handle,
// heap blocks). The library frees such records only when the thread ends; the framework's
// threads outlive the plug-in, which it loads and frees for each properties call, so every load
// that did any work left two handles behind. This guard needs neither: a flag word per static,
// changed atomically, and a yield while another thread is building the object.
#include <cstdint>

#include "win/windows_headers_win.h"

namespace {

// The first byte of the 64-bit guard is the compiler's "built" flag, read inline before these
// calls; the word at byte 4 says whether a thread is building the object now.
volatile LONG* Busy(int64_t* guard) {
    return reinterpret_cast<volatile LONG*>(reinterpret_cast<char*>(guard) + 4);
}

bool Built(int64_t* guard) {
    return __atomic_load_n(reinterpret_cast<char*>(guard), __ATOMIC_ACQUIRE) != 0;
}

}  // namespace

extern "C" int __cxa_guard_acquire(int64_t* guard) {
    for (;;) {
        if (Built(guard))
            return 0;
        if (InterlockedCompareExchange(Busy(guard), 1, 0) == 0) {
            if (!Built(guard))
                return 1;  // this thread builds it
            InterlockedExchange(Busy(guard), 0);
            return 0;
        }
        SwitchToThread();
    }
}

extern "C" void __cxa_guard_release(int64_t* guard) {
    __atomic_store_n(reinterpret_cast<char*>(guard), 1, __ATOMIC_RELEASE);
    InterlockedExchange(Busy(guard), 0);
}

// The constructor threw: the next pass tries again.
extern "C" void __cxa_guard_abort(int64_t* guard) {
    InterlockedExchange(Busy(guard), 0);
}
