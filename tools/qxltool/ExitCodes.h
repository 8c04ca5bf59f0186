#pragma once

// The exit codes of qxltool, as --help and docs/qxltool.md list them.
enum QxlExitCode {
    kExitOk = 0,
    kExitDamaged = 1,     // check found damage
    kExitUsage = 2,       // a wrong command line
    kExitUnreadable = 3,  // a file or directory missing or unreadable, no log files
    kExitRefused = 4,     // a file written by a newer version, or too short for a header
    kExitNotConverted = 5,// the text-log conversion failed
    kExitOutputClosed = 6,// standard output went away (a closed pipe)
};
