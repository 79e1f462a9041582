#include "cases/case_record.h"

#include <CephCalc.h>
#include <gtest/gtest.h>

#include "host/host_test.h"
#include "tracing/landmark_finder.h"

namespace cephtool {
namespace {

using host_test::read;

double length_of_sn(const Case& record) {
    CaseRecord fields(record);
    const SheetSubject who = fields.subject(1, 0);
    char points[] = "([S],[N])";
    return CCephCalc::Calc_Mult(0, 101, points, who.record, who.kCount, who.kPoints, who.uCount, who.uPoints, 1);
}

TEST(CaseRecord, FinerStepsKeepTheBitsOfAWholeCase) {
    // The fraction of Or brings the whole case to 1/64 pixel; S-N must not notice.
    const std::string whole = "# scale_mm_per_px=0.1\nS,850,850\nN,1563,751\nOr,1435,1055";
    EXPECT_EQ(length_of_sn(read("a.csv", whole)), length_of_sn(read("a.csv", whole + ".5")));
}

TEST(CaseRecord, ALandmarkHalfAPixelAwayIsNoMatterToWhatDoesNotUseIt) {
    Case whole = read("a.json", host_test::bytes_of(SAMPLES "/lateral-average.json"));
    whole.virtuals = {{"V", "AngleBisector([S],[N],[Me],300)"}, {"X", "extension([A],[B],12.5)"}};
    std::string text =
        "Calc:\nV=len([S],[V])\nX=len([V],[X])\nE=len([A],EffectiveA())\nn=len(AngleBisector([Go],[Me],[Ar],77),[N])\n";
    for (const Landmark& landmark : whole.landmarks) text += landmark.name + "=len([S],[" + landmark.name + "])\n";
    const AnalysisSheet sheet(0, text.data(), text.size());
    const auto value = [&](const Case& record, int item) {
        CaseRecord fields(record);
        return sheet.Evaluate(item, fields.subject(1, 0)).value;
    };
    EXPECT_NEAR(value(whole, 0), 300 * *whole.mm_per_pixel, 1e-9);
    for (std::size_t i = 0; i < whole.landmarks.size(); ++i) {
        Case moved = whole, without = whole;
        moved.landmarks[i].position.y += 0.5;
        without.landmarks.erase(without.landmarks.begin() + static_cast<std::ptrdiff_t>(i));
        CaseRecord lacking(without);
        for (int item = 0; item < sheet.GetCount(); ++item) {
            if (!sheet.Missing(item, SheetPart::value, lacking.subject(1, 0)).IsEmpty()) continue;
            EXPECT_EQ(value(moved, item), value(whole, item)) << sheet.GetItem(item).name << whole.landmarks[i].name;
        }
        const auto position = [](const Case& record) { return LandmarkFinder(record)("V").value_or(Position()).x; };
        const bool stays = sheet.Missing(0, SheetPart::value, lacking.subject(1, 0)).IsEmpty();
        EXPECT_TRUE(!stays || position(moved) == position(whole)) << whole.landmarks[i].name;
    }
}

TEST(CaseRecord, HoldsFractionsToASixtyFourthOfAPixel) {
    CaseRecord fields(read("a.csv", "# scale_mm_per_px=0.128\nS,10.015625,-2.01\nN,7,1000000\nQ,1,2\n"));
    const auto& record = *static_cast<tagPOINTLAT*>(fields.subject(1, 0).record);
    EXPECT_EQ(record.Scale, 0.128 / 64);
    EXPECT_EQ(record.Point[0], POINT({641, -129}));
    EXPECT_EQ(record.Point[1], POINT({448, 64'000'000}));
    EXPECT_STREQ(record.UserName[0], "Q");
    EXPECT_EQ(record.UserPoint[0], POINT({64, 128}));
    EXPECT_EQ(record.Point[2], POINT({0, 0}));
    CaseRecord own(read("a.csv", "# scale_mm_per_px=0.1\nS,1,2\nQ,1.5,2\n"));
    EXPECT_EQ(static_cast<tagPOINTLAT*>(own.subject(1, 0).record)->UserPoint[0], POINT({96, 128}));
}

TEST(CaseRecord, CarriesEverySortOfLandmark) {
    CaseRecord fields(read("a.json", R"json({
        "format": "cephtool-case", "version": 1, "kind": "lateral", "mm_per_pixel": 1,
        "landmarks": {"S": [10, 20], "Vmi": [30, 40]}, "user": {"顎": [5, 6]},
        "virtual": {"V 1": "mid([S],[Vmi])"}})json"));
    const SheetSubject who = fields.subject(1, 0);
    const auto position = [&](const char* name) {
        const CPointD p = CCephCalc::PointPos(0, name, who.record, who.kCount, who.kPoints, who.uCount, who.uPoints);
        return std::pair(p.x, p.y);
    };
    EXPECT_EQ(position("Vmi"), std::pair(30.0, 40.0));
    EXPECT_EQ(position("V 1"), std::pair(20.0, 30.0));
    EXPECT_EQ(position("\x8A\x7B"), std::pair(5.0, 6.0));
}

TEST(CaseRecord, ACastWithoutAPalateIsNotJudged) {
    const std::string cast = R"({"format": "cephtool-case", "version": 1, "kind": "model", "mm_per_pixel": 1, )";
    CaseRecord unjudged(read("a.json", cast + R"("landmarks": {"16m": [1, 2]}})"));
    CaseRecord judged(read("a.json", cast + R"("landmarks": {"16m": [1, 2]}, "palate": 2})"));
    EXPECT_EQ(static_cast<tagPOINTMO*>(unjudged.subject(1, 0).record)->Palate, -1);
    EXPECT_EQ(static_cast<tagPOINTMO*>(judged.subject(1, 0).record)->Palate, 2);
    EXPECT_EQ(static_cast<tagPOINTMO*>(judged.subject(1, 0).record)->Upper.Tooth[0].Mesial, POINT({1, 2}));
}

}  // namespace
}  // namespace cephtool
