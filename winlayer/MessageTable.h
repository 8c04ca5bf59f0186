#pragma once
#include <windows.h>
#include <cstddef>

namespace winlayer {

// One row of a window's message table: the message, for WM_COMMAND the
// command identifier (matched against the low word of wParam only, so menu,
// accelerator and control commands look alike), and the handler.  A handler
// gets the two message parameters and a "handled" flag preset to true; clearing
// the flag hands the message to the default procedure.
template <class T>
struct MessageEntry {
    UINT message;
    WORD command;
    LRESULT (T::*handler)(WPARAM wParam, LPARAM lParam, bool& handled);
};

template <class T>
struct MessageTable {
    const MessageEntry<T>* entries;
    std::size_t count;
};

template <class T, std::size_t N>
constexpr MessageTable<T> MakeTable(const MessageEntry<T> (&entries)[N])
{
    return MessageTable<T>{entries, N};
}

inline bool EntryMatches(UINT entryMessage, WORD entryCommand, UINT message, WPARAM wParam)
{
    if (entryMessage != message)
        return false;
    return message != WM_COMMAND || entryCommand == LOWORD(wParam);
}

// Runs the first entry that matches, in table order.  Returns true (and the
// handler's result) when the handler left the flag set; false when nothing
// matched or the handler cleared the flag, in which case the caller runs the
// default procedure.  Later entries are never consulted.
template <class T>
bool DispatchTable(T& target, const MessageTable<T>& table, UINT message, WPARAM wParam,
                   LPARAM lParam, LRESULT& result)
{
    for (std::size_t i = 0; i < table.count; ++i) {
        const MessageEntry<T>& entry = table.entries[i];
        if (!EntryMatches(entry.message, entry.command, message, wParam))
            continue;
        bool handled = true;
        LRESULT handlerResult = (target.*entry.handler)(wParam, lParam, handled);
        if (!handled)
            return false;
        result = handlerResult;
        return true;
    }
    return false;
}

} // namespace winlayer
