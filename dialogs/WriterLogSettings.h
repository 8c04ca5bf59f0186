#pragma once
#include "dialogs/LogSettings.h"
#include "log/LogWriter.h"

// The running log writer seen as the settings commands' LogSettings.
class WriterLogSettings : public LogSettings {
public:
    explicit WriterLogSettings(LogWriter& writer) : writer_(writer) {}

    const wchar_t* SaveDirectory() const override { return writer_.SaveDirectory(); }
    void SetSaveDirectory(const wchar_t* directory) override { writer_.SetSaveDirectory(directory); }
    int StartNewLogFile() override { return writer_.StartNewLogFile(); }

    SaveParameters Parameters() const override
    {
        return {writer_.SaveDays(), writer_.SaveTime(), writer_.LogSize()};
    }
    void SetParameters(const SaveParameters& p) override
    {
        writer_.SetSettings(p.saveDays, p.saveTime, p.logSize);
    }

private:
    LogWriter& writer_;
};
