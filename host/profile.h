// The program as a host application: where the engine finds the folder of analyses.
#pragma once

#include <Framework.h>

#include <string>

namespace cephtool {

// The application object of the process from here to its end. Its profile holds the analysis folder and nothing else.
class ProgramProfile : public CWinApp {
 public:
    // The folder in the system's own spelling; "" takes the one that ships with the program. Throws an Error when it
    // is no folder or its name has no place in code page 932.
    explicit ProgramProfile(const std::string& analysis_folder);

    // In UTF-8.
    const std::string& analysis_folder() const { return folder_; }

    CString GetProfileString(LPCSTR section, LPCSTR entry, LPCSTR defaultValue) override;
    UINT GetProfileInt(LPCSTR section, LPCSTR entry, int defaultValue) override;
    BOOL WriteProfileString(LPCSTR section, LPCSTR entry, LPCSTR value) override;
    BOOL WriteProfileInt(LPCSTR section, LPCSTR entry, int value) override;

 private:
    std::string folder_;
    CString folder_in_profile_;
};

}  // namespace cephtool
