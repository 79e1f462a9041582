// Cephalometric analysis engine: analysis definition files, landmark expressions, formulas and norms.
//
// Kinds: 0 lateral, 1 postero-anterior, 2 dental cast, 10 diagnosis sheet, 20 surgical analysis. Records: tagPOINTLAT
// for 0, 10 and 20, tagPOINTPA for 1 and 11, tagPOINTMO otherwise. Texts are code page 932. Pointers to landmark
// lists may be null when their count is null or 0. Nothing is cached between calls and nothing is reported: an
// unreadable file, an unknown name or a degenerate construction gives the value stated.
#pragma once

#include "PointD.h"
#include "Records.h"
#include "framework/export.h"
#include "framework/text.h"
#include "framework/window.h"

class ResultList;

class TOOL_API CCephCalc {
 public:
    // --- Definition files ------------------------------------------------------------------------------------
    // Full path of analysis file `index` of a kind's catalogue; "" when there is none. Kind 20 has one file; index
    // -1 of kind 0 is the Ricketts table.
    static CString FormFile(int kind, int index);
    // Code of a key line ("Calc:" is 2, "Calc2:" 102, ...), 0 for a content line.
    static int Str_Check(const char* line);
    // Title of the definition file at `path`; "" without file or title.
    static CString Get_Title(const char* path);
    // The line behind "Comment:" of analysis file `index`; "" when there is none.
    static CString GetComment(int kind, int index);
    // 1 when a first-set item of any analysis of the kind uses landmark `name` (without brackets), else 0.
    static int Use_Point(int kind, const char* name);
    // Cuts the type number off an item expression in place and decodes it: column 0..2, mode 0..3.
    static void GetType(char* expression, int* column, int* mode);
    // Field n (from 0) of a comma-separated text, at most 100 bytes of it; the last field when there are fewer.
    static CString Get_NumStr(char* text, int n);

    // --- Landmarks -------------------------------------------------------------------------------------------
    // Position of a landmark in pixels: fixed, then user, then virtual landmarks; (0, 0) when unknown.
    static CPointD PointPos(int kind, const char* name, void* record, unsigned short* kCount, tagKPOINT* kPoints,
                            unsigned short* uCount, tagUPOINT* uPoints);
    // Value of the first point expression in `text`, in pixels; what was read is overwritten with blanks.
    static CPointD Calc_Point(int kind, char* text, void* record, unsigned short* kCount, tagKPOINT* kPoints,
                              unsigned short* uCount, tagUPOINT* uPoints);
    // Resolves the virtual landmark `which` with `fixedPoints` and `userPoints` in place of the record's own (null:
    // the record's) and `scale` in mm a pixel. 1 and *out on success; 0 and (0, 0) when the construction holds no
    // point or refers to itself.
    static int GetVirtualPoint(unsigned int kind, double scale, tagKPOINT* which, unsigned short* kCount,
                               tagKPOINT* kPoints, unsigned short* uCount, tagUPOINT* uPoints, tagPOINT* fixedPoints,
                               tagPOINT* userPoints, void* record, CPointD* out);

    // --- Formulas --------------------------------------------------------------------------------------------
    // Evaluates `formula` of analysis file `index` and blanks what it read. `values` holds 100 doubles, *count of
    // them in use; each step appends one, up to 99. topLevel 1 reads to ";" or the end, 0 a group to its ")".
    static double Calc(int kind, int index, char* formula, double* values, int* count, void* record,
                       unsigned short* kCount, tagKPOINT* kPoints, unsigned short* uCount, tagUPOINT* uPoints, int sex,
                       int band, double scale, int topLevel);
    // One geometric function on the points behind its name: lengths in mm by the record's scale, angles in degrees.
    // Codes: 101 len, 102 lenR, 103 lenD, 104 angle1, 105 angle2, 108 Model, 109 angle3, 110 angle4; others give 0.
    static double Calc_Mult(int kind, unsigned int function, char* text, void* record, unsigned short* kCount,
                            tagKPOINT* kPoints, unsigned short* uCount, tagUPOINT* uPoints, char sex);
    // The item whose quoted name `text` holds; mode as in Calc_1. Blanks what it read.
    static double Calc_SDU(int kind, int mode, int index, char* text, void* record, unsigned short* kCount,
                           tagKPOINT* kPoints, unsigned short* uCount, tagUPOINT* uPoints, int sex, int band,
                           double scale);
    // One item by name. Mode 0: its value. 1: its deviation in SD, *valueOut the value (999999999.0 without a numeric
    // mean), *sdOut the SD. 2: its mean, 3: its SD, each also in *valueOut. Both outputs may be null.
    static double Calc_1(int mode, int kind, int index, const char* name, void* record, unsigned short* kCount,
                         tagKPOINT* kPoints, unsigned short* uCount, tagUPOINT* uPoints, int sex, int band,
                         double scale, double* valueOut, double* sdOut);
    // Norm text of an item, which 0 mean, 1 SD; "" without one. keepDecimals 0 drops trailing zeros. Sex 1 is male;
    // band mod 100 picks the column of first-set sections, band / 100 that of second-set sections.
    static CString Get_MeanSD(int kind, int index, const char* name, int which, int sex, int band, void* record,
                              unsigned short* kCount, tagKPOINT* kPoints, unsigned short* uCount, tagUPOINT* uPoints,
                              double scale, int keepDecimals);
    // The same as a number: 1 and *out, or 0 and *out = 0.
    static int Get_MeanSD(int kind, int index, double* out, int which, int sex, int band, const char* name,
                          void* record, unsigned short* kCount, tagKPOINT* kPoints, unsigned short* uCount,
                          tagUPOINT* uPoints, double scale);
    // (value - mean) / sd, truncated toward zero in the first; 0 when sd is 0.
    static int GetSDU(double value, double mean, double sd);
    static double GetDoubleSDU(double value, double mean, double sd);
    // A cast measure for a token such as "[UCAW]", in mm (ratios in percent); 0.0 when unknown or incomplete.
    static double Calc_Model(const char* token, tagPOINTMO* record);

    // --- Result lists (ResultList.h) ---------------------------------------------------------------------------
    // Replaces what `list` holds by the rows of analysis file `index` of a kind: values, norms and deviations as texts,
    // in the order of the file. Returns their number; 0 when the file can't be read.
    static int User_Calc(int kind, int index, void* record, unsigned short* kCount, tagKPOINT* kPoints,
                         unsigned short* uCount, tagUPOINT* uPoints, int sex, int band, ResultList* list);
    // The same of a diagnosis sheet (kind 10), whose rows are mostly texts, and of the surgical analysis (kind 20).
    static int User_Diag(int index, void* record, unsigned short* kCount, tagKPOINT* kPoints, unsigned short* uCount,
                         tagUPOINT* uPoints, int sex, int band, ResultList* list);
    static int User_CalcSurg(void* record, unsigned short* kCount, tagKPOINT* kPoints, unsigned short* uCount,
                             tagUPOINT* uPoints, int sex, int band, ResultList* list);

    // --- Growth stages ---------------------------------------------------------------------------------------
    // Ordinal of a Hellman dental stage: "I" 0 ... "VA" 8, anything else 9.
    static double GetDentalAge(const char* text);
    // Stage (from 0) of the Ricketts table for an age in years, or for `value` where the table's type is not age; the
    // last one that matches, 0 when none does or the table is missing.
    static int Get_RickettsStage(int sex, double age, double value);
    // Fills the combo box with the stage names of analysis file `index` and selects `selected`, else the stage that
    // `age` (years) or `dentalStage` (ordinal) lies in. `set` 2 reads the second set. Returns the number of names.
    static int SetStageList(int kind, CComboBox* combo, int index, int sex, double age, double dentalStage, int set,
                            const char* selected);
    // (value - mean) / SD of item number `item` of the Ricketts table; 0 without the item or one of its norms. Outputs
    // may be null and stay untouched without the item: `name` takes 51 bytes; a missing norm is stored as 0.
    static double Get_RickettsParam(tagPOINTLAT* points, int item, int sex, int band, double scale,
                                    unsigned int reserved, char* name, double* value, double* sd, double* mean);
    // Bone age in years from points 11 to 21 (see tagCVBA); sex 1 is male. Infinite or NaN when a length that divides
    // is 0.
    static double Calc_CVBA(tagCVBA* points, int sex);

    // --- Records ---------------------------------------------------------------------------------------------
    // Places the auxiliary points (slots 54 to 58) that are empty, at fixed offsets in mm from their landmarks.
    static void Check_LatPoint(tagPOINTLAT* record);

    // --- Display modes (kinds 0, 1 and 2) ----------------------------------------------------------------------
    // Appends "-----------" and the titles of the kind's modes to the combo box, item data 0 and the mode's number, and
    // selects entry 0; with fewer than two entries it is disabled.
    static void SetCalcMode(int kind, CComboBox* combo);
    // Path of the index-th listed mode file that exists, "" when there is none.
    static CString CalcModeFile(int kind, int index);
    // Reads a mode file: landmark names, packed measurements and landmark settings are appended to the three lists,
    // supplementary lines fill `suppLines` (30 tagSUPPLINE) from its start; further ones stay untouched.
    // A measurement is "RRRGGGBBBd<position>SIZE=<size>CALC=<text>", d the decimals code (0, 1, 2, or 9 for 0.5).
    static void ReadCalcMode(const char* path, void* suppLines, CStringArray* points, CStringArray* calcs,
                             CStringArray* pointSettings);
    // 1 when the list holds the name, or is empty; else 0.
    static int CheckCalcModePoint(CStringArray* points, const char* name);
};
