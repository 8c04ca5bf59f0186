// The program's command line and showmess's, with the lines showmess reads from standard input.  Input: the
// program's line, switch characters, showmess's arguments (U+E000..U+E007 alone stand for its option words),
// a line number when they parse, a chunk size, then the bytes of standard input.
#include <algorithm>

#include "server/CommandLine.h"
#include "tools/fuzz/FuzzDriver.h"
#include "tools/showmess/LineSplitter.h"
#include "tools/showmess/ShowMessOptions.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput in(data, size);
    const std::wstring line = in.Text(600), chars = in.Text(3);
    const std::size_t at = chars.empty() ? std::wstring::npos : line.find_first_of(chars);
    FUZZ_CHECK(FindSwitch(line.c_str(), chars.c_str()) == (at == std::wstring::npos ? nullptr : &line[at + 1]));
    // A switch counts only as "-" or "/" and its word ending the line, in any ASCII case; the platform's
    // comparison also passes over a few other units (a soft hyphen).
    std::wstring tail = line.substr(line.size() - std::min<std::size_t>(line.size(), 12));
    std::transform(tail.begin(), tail.end(), tail.begin(), [](wchar_t c) { return c < L'A' || c > L'Z' ? c : c | 32; });
    auto endsIn = [&](std::wstring word) {
        return tail.size() > word.size() && tail.compare(tail.size() - word.size(), word.size(), word) == 0 &&
               (tail.end()[-1 - word.size()] == L'-' || tail.end()[-1 - word.size()] == L'/');
    };
    const SwitchAction action = ScanCommandLine(line.c_str()), expected =
        endsIn(L"unregserver") ? SwitchAction::Unregister : endsIn(L"regserver") ? SwitchAction::Register : SwitchAction::Run;
    FUZZ_CHECK(action == expected ||
               (expected == SwitchAction::Run && std::any_of(line.begin(), line.end(), [](wchar_t c) { return c >= 0x80; })));

    static const wchar_t* const kWord[] = {L"--", L"--help", L"--atom", L"--show", L"--close", L"--hold", L"--count", L"--rate"};
    std::vector<std::wstring> args(in.Number(8)), texts;
    for (std::wstring& arg : args)
        if ((arg = in.Text(40)).size() == 1 && arg[0] >= 0xE000 && arg[0] < 0xE008)
            arg = kWord[arg[0] - 0xE000];
    ShowMessOptions options;
    options.texts = {L"left over"};  // a parse starts afresh
    std::wstring error;
    const bool parsed = ParseShowMessOptions(args, options, error);
    FUZZ_CHECK(parsed == error.empty());
    // Accepted: an option is set exactly when given before any "--"; the texts are the other arguments but
    // the numbers of --count and --rate; lines are counted only with --count, held only with the component.
    const auto end = std::find(args.begin(), args.end(), L"--");
    auto given = [&](const wchar_t* word) { return std::find(args.begin(), end, word) != end; };
    for (auto arg = args.begin(); arg != args.end(); ++arg)
        if (arg > end || (arg < end && arg->compare(0, 2, L"--") != 0 &&
                          (arg == args.begin() || (arg[-1] != L"--count" && arg[-1] != L"--rate"))))
            texts.push_back(*arg);
    const unsigned index = parsed ? in.Number(0xFFFFFFFF) : 0;
    wchar_t number[12];
    std::swprintf(number, 12, L" %u", index);
    FUZZ_CHECK(!parsed || (options.help == given(L"--help") && options.useAtom == given(L"--atom") &&
                           options.show == given(L"--show") && options.close == given(L"--close") &&
                           options.hold == given(L"--hold") && (options.count > 0) == given(L"--count") &&
                           options.count <= 4000000000u && options.rate >= 0 && (options.rate == 0 || options.count > 0) &&
                           !(options.hold && (options.useAtom || options.close)) && options.texts == texts &&
                           (options.count == 0 || texts.size() <= 1) &&
                           NumberedLine(options, index) == (texts.empty() ? L"Test line" : texts[0]) + number));

    // Standard input in chunks gives the lines one feed gives: one per LF, with one CR before it dropped
    // (counted on ASCII: the platform's decoder may take a CR into a broken UTF-8 sequence).
    const std::size_t chunk = 1 + in.Number(64), n = in.RestSize();
    const char* bytes = reinterpret_cast<const char*>(in.Rest());
    LineSplitter whole, pieces;
    std::vector<std::wstring> lines = whole.Feed(bytes, n), fed;
    for (std::size_t from = 0; from < n; from += chunk)
        for (std::wstring& piece : pieces.Feed(bytes + from, std::min(chunk, n - from)))
            fed.push_back(piece);
    std::wstring last, lastFed;
    const bool open = whole.Finish(last);
    lines.push_back(last);
    long long returns = std::count(bytes, bytes + n, '\r'), dropped = open && bytes[n - 1] == '\r';
    for (std::size_t i = 1; i < n; ++i)
        dropped += bytes[i] == '\n' && bytes[i - 1] == '\r';
    for (const std::wstring& text : lines)
        returns -= std::count(text.begin(), text.end(), L'\r');
    FUZZ_CHECK(open == (n > 0 && bytes[n - 1] != '\n') && pieces.Finish(lastFed) == open && lastFed == last &&
               fed.size() + 1 == lines.size() && std::equal(fed.begin(), fed.end(), lines.begin()) &&
               fed.size() == static_cast<std::size_t>(std::count(bytes, bytes + n, '\n')) &&
               (returns == dropped || std::any_of(bytes, bytes + n, [](char c) { return c < 0; })));
    return 0;
}
