// The Japanese era calendar (nengo), read from the settings file "Era.dat" beside the running program when an object is
// made; later changes of the file concern later objects only. Names and codes are code page 932.
//
// An era is numbered from 0 in the order of the file; -1 is the time before the first one. A number outside the lists
// throws CInvalidArgException*. Without the file there is one message box when the object is made, and then the answers
// stated; without the memory to hold it the same answers and no box. No day is checked against the calendar; month and
// day 0 count as 1.
#pragma once

#include "framework/export.h"
#include "framework/text.h"

class TOOL_API CJapEra {
 public:
    CJapEra();

    int IsDataFileFound() const { return found_; }  // 1 or 0

    // The era of the date, -1 for none and without the file. *eraYear is the year in it, 0 for none; it may be null.
    int GetEraYear(int year, int month, int day, int* eraYear) const;
    // The year counted from the first year of the span with number `era`, 0 when that has no beginning, -1 without the
    // file. Month and day are not used. Kept: spans are counted from the one before the first era, so `era` is one more
    // than everywhere else. Hosts pass it so.
    int GetEraYear(int year, int month, int day, int era) const;
    // "" where GetEraYear gives -1.
    CString GetEraYearName(int year, int month, int day, int* eraYear) const;
    CString GetEraYearCode(int year, int month, int day, int* eraYear) const;
    // At most 2500, whether or not the era lasted so long; 0 without the file.
    int GetChristYear(int era, int eraYear) const;
    // 1 when the day lies inside the era, else 0; 0 without the file.
    int CheckEra(int era, int eraYear, int month, int day) const;

    // "" without the file.
    CString GetEraName(int era) const;
    CString GetEraCode(int era) const;
    // All of them, in place of what the list holds.
    void GetEraNameSet(CStringArray* names) const;
    void GetEraCodeSet(CStringArray* codes) const;

 private:
    void read_table();

    int found_ = 0;
    int slot_count_ = 0;  // of ranges_: one more than there are eras
    CString path_;
    CStringArray names_;
    CStringArray codes_;
    CStringArray ranges_;  // entry 0: the time before the first era
};
