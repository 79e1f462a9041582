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
};
