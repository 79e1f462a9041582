// The landmark records that a host fills and the analysis engine reads. Coordinates are whole image pixels, x to the
// right, y down; a lateral face looks right. (0, 0) is the empty point: a landmark that was not placed.
#pragma once

#include "framework/plane.h"

enum { LAT_POINT_COUNT = 63, PA_POINT_COUNT = 27, USER_POINT_MAX = 100 };

// Definition of a user landmark: at most five bytes and a NUL; an empty name is an unused slot.
struct tagUPOINT {
    char Name[6];
};

// Virtual landmark: a name and a point expression over other landmarks, such as "mid([U1],[L1])".
struct tagKPOINT {
    char Name[32];
    char Construction[256];
};

// Lateral film. The first 51 slots of Point are the named landmarks (LandmarkTable gives their names), slots 54 to
// 58 auxiliary points. Scale is mm a pixel. UserName and UserPoint run side by side.
struct tagPOINTLAT {
    CPoint Point[LAT_POINT_COUNT];
    double Scale;
    char UserName[USER_POINT_MAX][6];
    CPoint UserPoint[USER_POINT_MAX];
};

// Postero-anterior film: 27 named landmarks.
struct tagPOINTPA {
    CPoint Point[PA_POINT_COUNT];
    double Scale;
    char UserName[USER_POINT_MAX][6];
    CPoint UserPoint[USER_POINT_MAX];
};

// A tooth's mesial and distal contact points; their distance is its mesio-distal crown width.
struct tagTOOTH {
    CPoint Mesial, Distal;
};

// One dental arch seen from its chewing side. Index 0 of a pair is the patient's right. Teeth run from the right
// first molar (0) round the front to the left first molar (11): 6 5 4 3 2 1 | 1 2 3 4 5 6.
// Width: between the two points of a pair (coronal: buccal cusp tips of the first premolars; basal: deepest points of
// the alveolar base at the same teeth). Length: from the front point at right angles to the line through the two
// rear points (distal faces of the first molars). After Otsubo, J Jpn Orthod Soc 1957;16:36-46.
struct tagARCH {
    tagTOOTH Tooth[12];
    CPoint CoronalWidth[2], CoronalFront, CoronalRear[2];
    CPoint BasalWidth[2], BasalFront, BasalRear[2];
};

// Dental cast. Palate is a category that the host judges ("[PLTU]"); -1 is "not judged".
struct tagPOINTMO {
    double Scale;
    char UserName[USER_POINT_MAX][6];
    CPoint UserPoint[USER_POINT_MAX];
    tagARCH Upper, Lower;
    int Palate;
};

// Cervical vertebra points of a bone age. In use: of C3 the ends of the lower border 14 and 15, the front corner of the
// upper border 11, the ends of the depth 12 and 13; of C4 the lower border 20 and 21, the upper front corner 17, the
// upper rear corner 16, the depth 18 and 19.
struct tagCVBA {
    CPoint Point[22];
};

// A supplementary line of a display mode. `style` is a weight: 101 normal, 102 bold.
struct tagSUPPLINE {
    char from[6];
    char to[6];
    COLORREF color;
    std::int32_t style;
};
