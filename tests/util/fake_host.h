// A host in memory: its profile is a map, its message boxes a list.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "framework/application.h"

class FakeHost : public CWinApp {
 public:
    std::map<std::string, int> profile;  // "section/key"
    std::vector<std::pair<std::string, UINT>> boxes;

    UINT GetProfileInt(LPCSTR section, LPCSTR entry, int otherwise) override {
        return static_cast<UINT>(profile.try_emplace(std::string(section) + "/" + entry, otherwise).first->second);
    }
    BOOL WriteProfileInt(LPCSTR section, LPCSTR entry, int value) override {
        return profile[std::string(section) + "/" + entry] = value, TRUE;
    }
    int DoMessageBox(LPCSTR text, UINT type, UINT) override { return boxes.emplace_back(text, type), IDOK; }
};
