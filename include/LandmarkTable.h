// Addition of this project: the names behind the slots of the landmark records, so that a host can fill a record by
// name. Kinds 0, 10, 20: tagPOINTLAT (51 names); 1, 11: tagPOINTPA (27 names); any other: tagPOINTMO, whose
// teeth are named by FDI number and side ("16m" mesial, "16d" distal; 16..11 21..26 upper, 46..41 31..36 lower) and
// whose arch points "UCWR" "UCWL" "UCF" "UCRR" "UCRL" (upper coronal: width right and left, front, rear right and
// left), "UBWR".. (upper basal), "LCWR".., "LBWR".. (lower).
// The engine's formulas find the names of kinds 0, 1, 10, 11 and 20 only; a cast is measured through "Model([UCAW])".
#pragma once

#include "PointD.h"
#include "Records.h"
#include "framework/export.h"

struct SheetSubject;

class TOOL_API LandmarkTable {
 public:
    // Number of named slots of the kind's record.
    static int Count(int kind);
    // Name of a slot, "" outside 0 .. Count - 1. The text is static.
    static const char* Name(int kind, int slot);
    // Slot of a name (case-sensitive), -1 when the kind has none.
    static int Find(int kind, const char* name);
    // The slot's point in a record of the kind, null outside 0 .. Count - 1.
    static CPoint* Point(int kind, void* record, int slot);
    // Where a subject (AnalysisSheet.h) has a landmark, in pixels; names and failure as of CCephCalc::PointPos.
    static CPointD Position(int kind, const char* name, const SheetSubject& subject);
};
