#pragma once
#include <windows.h>

// Section "save" of the settings file: where and how the log is kept.
struct SaveSettings {
    UINT saveDays = 10;   // days a log file is kept; 0 keeps them all
    UINT saveTime = 600;  // seconds between timed flushes
    UINT logSize = 10;    // megabytes above which a new log file starts
    wchar_t saveDirectory[MAX_PATH] = {};
};

// The settings file: "config" beside the program, file name given by the
// language module.  Read at window creation, written by the settings dialogs.
class SettingsFile {
public:
    SettingsFile() = default;
    explicit SettingsFile(const wchar_t* path);
    // The file of `fileName` in the program's "config" folder.
    void Locate(const wchar_t* fileName);

    const wchar_t* Path() const { return path_; }

    // Reads the "save" section into `settings`.  True when the file names a
    // save directory.  Otherwise the default directory ("log" beside the
    // program) is set, the four defaults are written back, and false.
    bool Read(SaveSettings& settings) const;

    // Writes one key of the "save" section.
    bool Write(const wchar_t* key, const wchar_t* value) const;

private:
    wchar_t path_[MAX_PATH] = {};
};
