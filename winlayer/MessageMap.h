#pragma once
#include "winlayer/MessageTable.h"

namespace winlayer {

// Anything that routes window messages through a table: a window, a dialog,
// or a part of a window (a view) that its window hands messages to.
class MessageRouter {
public:
    virtual bool ProcessWindowMessage(UINT message, WPARAM wParam, LPARAM lParam,
                                      LRESULT& result) = 0;

protected:
    ~MessageRouter() = default;
};

// Routes through T's table, which T supplies as
//   static winlayer::MessageTable<T> Messages();
// and then, for what that table leaves, through a chained member's table:
// a frame tries its own entries first and then its view's.
template <class T>
class MessageMap : public MessageRouter {
public:
    bool ProcessWindowMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override
    {
        if (DispatchTable(static_cast<T&>(*this), T::Messages(), message, wParam, lParam, result))
            return true;
        return chained_ != nullptr && chained_->ProcessWindowMessage(message, wParam, lParam, result);
    }

protected:
    void ChainMessages(MessageRouter& member) { chained_ = &member; }

private:
    MessageRouter* chained_ = nullptr;
};

} // namespace winlayer
