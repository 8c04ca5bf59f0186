#pragma once
#include <cstdint>

// The three numbers of the "save" section as the log writer uses them.
struct SaveParameters {
    std::uint32_t saveDays;  // days a log file is kept; 0 keeps them all
    std::uint32_t saveTime;  // seconds between timed flushes
    std::uint32_t logSize;   // megabytes above which a new file starts
};

// What the settings commands change in the running log writer.  The main
// window passes its writer through this; tests pass a recorder.
class LogSettings {
public:
    virtual const wchar_t* SaveDirectory() const = 0;
    virtual void SetSaveDirectory(const wchar_t* directory) = 0;
    // Starts a new log file in the save directory at once, after the
    // pending lines went into the old one.  1 on success, 0 on failure.
    virtual int StartNewLogFile() = 0;

    virtual SaveParameters Parameters() const = 0;
    virtual void SetParameters(const SaveParameters& parameters) = 0;

protected:
    ~LogSettings() = default;
};
