// Linked into every program of the checked build.  Undefined behaviour
// there ends in an illegal instruction, and when that happens inside a
// window procedure the platform may swallow the exception and let the
// program go on, wrong and silent.  This handler sees the trap first, says
// which program stopped where, and ends the process with the exception's
// code, so that whoever started it sees the failure.
#include <windows.h>

#include <cstdio>

namespace {

LONG WINAPI ReportTrap(EXCEPTION_POINTERS* info)
{
    if (info->ExceptionRecord->ExceptionCode != EXCEPTION_ILLEGAL_INSTRUCTION)
        return EXCEPTION_CONTINUE_SEARCH;
    wchar_t program[MAX_PATH] = {};
    ::GetModuleFileNameW(nullptr, program, MAX_PATH);
    std::fprintf(stderr, "%ls: undefined-behaviour trap at %p (checked build)\n", program,
                 info->ExceptionRecord->ExceptionAddress);
    std::fflush(stderr);
    ::TerminateProcess(::GetCurrentProcess(), EXCEPTION_ILLEGAL_INSTRUCTION);
    return EXCEPTION_CONTINUE_SEARCH;
}

[[maybe_unused]] const void* const trapHandler = ::AddVectoredExceptionHandler(1, ReportTrap);

} // namespace
