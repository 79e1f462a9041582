#include "framework/application.h"

#include <mutex>
#include <string>
#include <vector>

#include "framework/settings.h"
#include "platform/framework/caller_buffer.h"
#include "platform/framework/profile.h"
#include "platform/number_text.h"

namespace {

constexpr LPCSTR default_profile = "Korvane9.ini";

// The host's objects, the one in charge last.
struct HostObjects {
    std::mutex guard;
    std::vector<CWinApp*> objects;
};

HostObjects& host_objects() {
    static HostObjects hosts;
    return hosts;
}

std::string profile_of(const CWinApp& host) {
    return tool::profile_path(tool::view_or_empty(host.m_pszProfileName));
}

}  // namespace

CWinApp::CWinApp(LPCSTR appName) : m_pszAppName(appName), m_pszProfileName(default_profile) {
    HostObjects& hosts = host_objects();
    const std::lock_guard lock(hosts.guard);
    hosts.objects.push_back(this);
}

CWinApp::CWinApp(Default) : m_pszAppName(nullptr), m_pszProfileName(default_profile) {}

CWinApp::~CWinApp() {
    HostObjects& hosts = host_objects();
    const std::lock_guard lock(hosts.guard);
    std::erase(hosts.objects, this);
}

UINT CWinApp::GetProfileInt(LPCSTR section, LPCSTR entry, int defaultValue) {
    return GetPrivateProfileIntA(section, entry, defaultValue, profile_of(*this).c_str());
}

BOOL CWinApp::WriteProfileInt(LPCSTR section, LPCSTR entry, int value) {
    return WriteProfileString(section, entry, tool::print_int(value).c_str());
}

CString CWinApp::GetProfileString(LPCSTR section, LPCSTR entry, LPCSTR defaultValue) {
    return CString(std::string_view(tool::profile_text(section, entry, defaultValue, profile_of(*this).c_str())));
}

BOOL CWinApp::WriteProfileString(LPCSTR section, LPCSTR entry, LPCSTR value) {
    return WritePrivateProfileStringA(section, entry, value, profile_of(*this).c_str());
}

CWinApp* AfxGetApp() {
    HostObjects& hosts = host_objects();
    static CWinApp fallback{CWinApp::Default{}};
    const std::lock_guard lock(hosts.guard);
    return hosts.objects.empty() ? &fallback : hosts.objects.back();
}

int AfxMessageBox(LPCSTR text, UINT type, UINT idHelp) {
    return AfxGetApp()->DoMessageBox(text, type, idHelp);
}
