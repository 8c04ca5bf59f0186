#include "DialogFixture.h"

#include <cstring>

#include "dialogs/FontCommand.h"

namespace {

// The main window's font records as creation sets them up, with a print
// font that differs from the view font.
class FontCommand : public DialogFixture {
protected:
    FontCommand()
    {
        logFont.lfHeight = -12;
        logFont.lfWeight = FW_NORMAL;
        ::lstrcpyW(logFont.lfFaceName, L"Courier New");
        state.lStructSize = sizeof(state);
        state.hwndOwner = script.Owner();
        state.lpLogFont = &logFont;
        state.Flags = CF_SCREENFONTS | CF_SHOWHELP | CF_INITTOLOGFONTSTRUCT | CF_EFFECTS | CF_APPLY;
        ::lstrcpyW(logFontCopy.lfFaceName, L"Print font");
        stateCopy.lpLogFont = &logFontCopy;
        viewFont = ::CreateFontIndirectW(&logFont);
    }
    ~FontCommand() override { ::DeleteObject(viewFont); }

    // Runs the command; afterwards the print records must equal the view's.
    void RunAndExpectPrintFontReset()
    {
        const HFONT oldFont = viewFont;
        RunFontCommand({logFont, state, logFontCopy, stateCopy, viewFont});
        EXPECT_TRUE(script.Finished());
        EXPECT_EQ(0, std::memcmp(&logFont, &logFontCopy, sizeof(LOGFONTW)));
        EXPECT_EQ(0, std::memcmp(&state, &stateCopy, sizeof(CHOOSEFONTW)));
        EXPECT_EQ(&logFont, stateCopy.lpLogFont);
        EXPECT_EQ(0u, ::GetObjectType(oldFont));  // deleted
        LOGFONTW made = {};
        ASSERT_EQ(static_cast<int>(sizeof(made)), ::GetObjectW(viewFont, sizeof(made), &made));
        EXPECT_EQ(0, std::memcmp(&logFont, &made, sizeof(LOGFONTW)));
    }

    LOGFONTW logFont = {};
    CHOOSEFONTW state = {};
    LOGFONTW logFontCopy = {};
    CHOOSEFONTW stateCopy = {};
    HFONT viewFont = nullptr;
};

TEST_F(FontCommand, CancelStillRemakesTheViewFontAndResetsThePrintFont)
{
    script.Then([](HWND fontDialog) { Click(fontDialog, IDCANCEL); });
    RunAndExpectPrintFontReset();
    // The choice stays; Wine's dialog fills in the pitch and family even on Cancel.
    EXPECT_STREQ(L"Courier New", logFont.lfFaceName);
    EXPECT_EQ(-12, logFont.lfHeight);
}

} // namespace
