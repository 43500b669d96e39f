// What this process holds: heap bytes, kernel handles and GDI objects, counted in ways that work
// under Wine as well as on Windows (the soak and the load/free test compare two such counts).
#pragma once

#include <cstdint>

#include "win/windows_headers_win.h"

// Bytes in use in every heap of the process, by walking them: Wine answers no heap statistics,
// and the C runtime's malloc has a heap of its own there.
inline uint64_t HeapBytesInUse() {
    HANDLE heaps[64];
    const DWORD count = GetProcessHeaps(64, heaps);
    uint64_t bytes = 0;
    for (DWORD i = 0; i < count && i < 64; ++i) {
        if (!HeapLock(heaps[i]))
            continue;
        PROCESS_HEAP_ENTRY entry{};
        while (HeapWalk(heaps[i], &entry)) {
            if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0)
                bytes += entry.cbData;
        }
        HeapUnlock(heaps[i]);
    }
    return bytes;
}

// Open kernel handles, by probing handle values: Wine's GetProcessHandleCount answers nothing
// useful, while GetHandleInformation tells a live handle from a free slot.
inline int OpenHandles() {
    int open = 0;
    for (uintptr_t value = 4; value < 0x10000; value += 4) {
        DWORD flags = 0;
        open += GetHandleInformation(reinterpret_cast<HANDLE>(value), &flags) != FALSE;
    }
    return open;
}

// GDI objects of the process. Wine's GetGuiResources answers 0; there a GDI handle is its slot
// in the process's handle table in the low word, and a handle with an empty high word names
// whatever the slot holds, so probing every slot counts the table's live entries.
inline int GdiObjects() {
    const DWORD counted = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS);
    if (counted != 0)
        return static_cast<int>(counted);
    int live = 0;
    for (uintptr_t slot = 1; slot < 0x10000; ++slot)
        live += GetObjectType(reinterpret_cast<HGDIOBJ>(slot)) != 0;
    return live;
}
