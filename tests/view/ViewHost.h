#pragma once
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "view/MessageView.h"
#include "winlayer/WindowImpl.h"

// A bare window whose client area is a MessageView: what the main window and
// a browser are to the view, without anything else of theirs.
class ViewHost : public winlayer::WindowImpl<ViewHost> {
public:
    ViewHost(LineSource& source, ViewPolicy policy, HFONT font);
    static winlayer::MessageTable<ViewHost> Messages();

    MessageView view;

private:
    LRESULT OnCreate(WPARAM, LPARAM, bool& handled);
    HFONT font_;
};

// Loads the English module (the line format), makes the view font, and
// creates a host window `lines` lines high around a source.
class ViewFixture : public ::testing::Test {
protected:
    static void SetUpTestSuite();
    static void TearDownTestSuite();
    void TearDown() override;

    void CreateHost(LineSource& source, ViewPolicy policy, int lines);

    HWND Hwnd() const { return host->Handle(); }
    MessageView& View() const { return host->view; }

    static HFONT font;
    static int lineHeight;
    std::unique_ptr<ViewHost> host;
};
