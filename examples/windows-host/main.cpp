// windows-host ANALYSES CASE.csv: a host of Tool.dll in one file. It lists the analyses of a folder in a combo box,
// shows the values that the chosen one measures, and draws the tracing: the wheel zooms, the bars scroll, and dragging
// draws a rubber-band line whose length stands in the title, as does the name of what a click meets.
#include <windows.h>
// Behind windows.h.
#include <windowsx.h>

#include <AnalysisSheet.h>
#include <CalcTool.h>
#include <CephCalc.h>
#include <Framework.h>
#include <Tools.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "face.h"

namespace {

constexpr int lateral = 0;
constexpr int list_width = 430, combo_height = 28;
enum { analysis_box = 100, value_list };

// The library asks its host for the analysis folder.
class Host : public CWinApp {
 public:
    explicit Host(LPCSTR folder) : CWinApp("windows-host"), folder_(folder) { CTools::LastDelimAdd(folder_); }
    CString GetProfileString(LPCSTR section, LPCSTR entry, LPCSTR otherwise) override {
        if (CString(section) == "DB_DIR" && CString(entry) == "ANAITEMPATH") return folder_;
        return CWinApp::GetProfileString(section, entry, otherwise);
    }

 private:
    CString folder_;
};

tagPOINTLAT face;
example::View view{0.32, CPoint(130, 100)};
CPoint drag_from, drag_to;  // in pixels of the film
bool dragging = false;

void show_values(HWND window) {
    CWnd dialog;
    dialog.Attach(window);
    const auto* const box = static_cast<CComboBox*>(dialog.GetDlgItem(analysis_box));
    const AnalysisSheet sheet(lateral, CCephCalc::FormFile(lateral, box->GetCurSel()));
    unsigned short none = 0;
    const SheetSubject subject{&face, &none, nullptr, &none, nullptr, 0, 0};
    CString text;
    for (int i = 0; i < sheet.GetCount(); ++i) {
        const SheetItem item = sheet.GetItem(i);
        if (item.heading || item.name.IsEmpty()) continue;
        const SheetRow row = sheet.Evaluate(i, subject);
        text.AppendFormat("%s\t%.1f\t%s", LPCSTR(item.name), row.value, LPCSTR(item.unit));
        if (row.has_mean && row.has_sd) text.AppendFormat("\t%.1f +- %.1f", row.mean, row.sd);
        text += "\r\n";
    }
    dialog.SetDlgItemText(value_list, text);
    dialog.Detach();
}

void fill_box(HWND window) {
    CWnd* const dialog = CWnd::FromHandle(window);
    auto* const box = static_cast<CComboBox*>(dialog->GetDlgItem(analysis_box));
    for (int i = 0;; ++i) {
        const CString file = CCephCalc::FormFile(lateral, i);
        if (file.IsEmpty()) break;
        box->AddString(CCephCalc::Get_Title(file));
    }
    box->SetCurSel(0);
}

// --- The tracing's window --------------------------------------------------------------------------------------------

void place_scroll_bars(HWND window) {
    RECT room;
    GetClientRect(window, &room);
    const int film = static_cast<int>(2400 * view.zoom);
    SCROLLINFO bar{sizeof bar, SIF_RANGE | SIF_PAGE | SIF_POS, 0, film, 0, 0, 0};
    bar.nPage = static_cast<UINT>(room.right), bar.nPos = view.offset.x;
    SetScrollInfo(window, SB_HORZ, &bar, TRUE);
    bar.nPage = static_cast<UINT>(room.bottom), bar.nPos = view.offset.y;
    SetScrollInfo(window, SB_VERT, &bar, TRUE);
}

void scroll(HWND window, int bar, LONG& offset, int code) {
    SCROLLINFO info{sizeof info, SIF_ALL, 0, 0, 0, 0, 0};
    GetScrollInfo(window, bar, &info);
    const int page = static_cast<int>(info.nPage);
    switch (code) {
        case SB_LINEUP: offset -= 20; break;
        case SB_LINEDOWN: offset += 20; break;
        case SB_PAGEUP: offset -= page; break;
        case SB_PAGEDOWN: offset += page; break;
        case SB_THUMBTRACK: offset = info.nTrackPos; break;
        default: return;
    }
    offset = std::clamp<LONG>(offset, 0, std::max(info.nMax - page, 0));
    place_scroll_bars(window);
    InvalidateRect(window, nullptr, TRUE);
}

CPoint device_point(LPARAM place) {
    return {GET_X_LPARAM(place), GET_Y_LPARAM(place)};
}

void show_title(HWND window, const CString& text) {
    CWnd::FromHandle(GetParent(window))->SetWindowText("windows-host: " + text);
}

CPoint film_point(LPARAM place) {
    return CCalcTool::Get_TRPoint(device_point(place), view.zoom, view.offset);
}

// Drawn a second time it is gone.
void rubber_band(HWND window) {
    const HDC dc = GetDC(window);
    CTools::Line_Make2(CDC::FromHandle(dc), drag_from, drag_to, view.zoom, view.offset, 1, RGB(255, 255, 255), PS_SOLID,
                       1);
    ReleaseDC(window, dc);
}

LRESULT CALLBACK tracing_window(HWND window, UINT message, WPARAM value, LPARAM place) {
    switch (message) {
        case WM_PAINT: {
            PAINTSTRUCT paint;
            CDC dc;
            dc.Attach(BeginPaint(window, &paint));
            example::draw_face(dc, face, view);
            dc.Detach();
            EndPaint(window, &paint);
            if (dragging) rubber_band(window);
            return 0;
        }
        case WM_SIZE: return place_scroll_bars(window), 0;
        case WM_HSCROLL: return scroll(window, SB_HORZ, view.offset.x, LOWORD(value)), 0;
        case WM_VSCROLL: return scroll(window, SB_VERT, view.offset.y, LOWORD(value)), 0;
        case WM_MOUSEWHEEL: {
            const double factor = GET_WHEEL_DELTA_WPARAM(value) > 0 ? 1.25 : 0.8;
            view.zoom = std::clamp(view.zoom * factor, 0.05, 5.0);
            view.offset = CPoint(static_cast<int>(view.offset.x * factor), static_cast<int>(view.offset.y * factor));
            place_scroll_bars(window);
            InvalidateRect(window, nullptr, TRUE);
            return 0;
        }
        case WM_LBUTTONDOWN:
            SetCapture(window);
            drag_from = drag_to = film_point(place);
            dragging = true;
            if (const char* name = example::name_of_hit(face, view, device_point(place))) show_title(window, name);
            rubber_band(window);
            return 0;
        case WM_MOUSEMOVE:
            if (dragging) {
                rubber_band(window);
                drag_to = film_point(place);
                rubber_band(window);
                CString title;
                title.Format("%.1f mm",
                             std::sqrt(std::pow(drag_to.x - drag_from.x, 2) + std::pow(drag_to.y - drag_from.y, 2)) *
                                 face.Scale);
                show_title(window, title);
            }
            return 0;
        case WM_LBUTTONUP:
            if (dragging) rubber_band(window);
            dragging = false;
            ReleaseCapture();
            return 0;
        default: return DefWindowProcA(window, message, value, place);
    }
}

// --- The main window -------------------------------------------------------------------------------------------------

LRESULT CALLBACK main_window(HWND window, UINT message, WPARAM value, LPARAM more) {
    switch (message) {
        case WM_SIZE:
            MoveWindow(GetDlgItem(window, analysis_box), 4, 4, list_width - 8, 400, TRUE);
            MoveWindow(GetDlgItem(window, value_list), 4, combo_height + 6, list_width - 8,
                       HIWORD(more) - combo_height - 10, TRUE);
            MoveWindow(FindWindowExA(window, nullptr, "tracing", nullptr), list_width, 0, LOWORD(more) - list_width,
                       HIWORD(more), TRUE);
            return 0;
        case WM_COMMAND:
            if (LOWORD(value) == analysis_box && HIWORD(value) == CBN_SELCHANGE) show_values(window);
            return 0;
        case WM_DESTROY:
            CTools::SaveWindowPos(CWnd::FromHandle(window), "HOST_");
            PostQuitMessage(0);
            return 0;
        default: return DefWindowProcA(window, message, value, more);
    }
}

void register_class(LPCSTR name, WNDPROC procedure) {
    WNDCLASSA made{};
    made.lpfnWndProc = procedure;
    made.hInstance = GetModuleHandleA(nullptr);
    made.hCursor = LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_ARROW));
    made.hbrBackground = static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH));
    made.lpszClassName = name;
    RegisterClassA(&made);
}

HWND make_child(HWND parent, LPCSTR type, DWORD style, int id) {
    return CreateWindowExA(0, type, "", WS_CHILD | WS_VISIBLE | style, 0, 0, 0, 0, parent,
                           reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr, nullptr);
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 3 || !example::read_face(arguments[2], &face)) {
        AfxMessageBox("usage: windows-host ANALYSES CASE.csv", MB_OK | MB_ICONSTOP);
        return 2;
    }
    const Host host(arguments[1]);
    register_class("windows-host", main_window);
    register_class("tracing", tracing_window);
    const HWND window = CreateWindowExA(0, "windows-host", "windows-host", WS_OVERLAPPEDWINDOW, 20, 20, 1000, 700,
                                        nullptr, nullptr, nullptr, nullptr);
    make_child(window, "COMBOBOX", CBS_DROPDOWNLIST | WS_VSCROLL, analysis_box);
    const HWND list = make_child(window, "EDIT", ES_MULTILINE | ES_READONLY | WS_VSCROLL, value_list);
    make_child(window, "tracing", WS_HSCROLL | WS_VSCROLL, 0);
    // Whichever typeface with Japanese the system has: columns stand at tabs, not at blanks of one width.
    CFont font;
    LOGFONTA japanese{};
    japanese.lfHeight = -13;
    japanese.lfCharSet = SHIFTJIS_CHARSET;
    font.CreateFontIndirectA(&japanese);
    SendMessageA(list, WM_SETFONT, reinterpret_cast<WPARAM>(font.GetSafeHandle()), TRUE);
    const UINT columns[] = {120, 150, 175};  // quarters of a character's mean width
    SendMessageA(list, EM_SETTABSTOPS, 3, reinterpret_cast<LPARAM>(columns));

    fill_box(window);
    show_values(window);
    CTools::LoadWindowPos(CWnd::FromHandle(window), "HOST_");
    ShowWindow(window, SW_SHOW);
    UpdateWindow(window);
    MSG message;
    while (GetMessageA(&message, nullptr, 0, 0) > 0) {
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
}
