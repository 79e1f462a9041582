// Landmarks that lie where nobody expects them.
#include "tracing/landmark_outliers.h"

#include <gmock/gmock.h>

#include <algorithm>

#include "host/host_test.h"

namespace cephtool {
namespace {

using host_test::run;
using testing::HasSubstr;
using testing::Not;

Case sample(const std::string& name) {
    return host_test::read(name, host_test::bytes_of(std::string(SAMPLES) + "/" + name));
}

void move(Case& record, const std::string& name, double x_mm, double y_mm) {
    for (Landmark& landmark : record.landmarks)
        if (landmark.name == name)
            landmark.position.x += x_mm / *record.mm_per_pixel, landmark.position.y += y_mm / *record.mm_per_pixel;
}

TEST(LandmarkOutliers, AreNamedOnAnyFilmAndNoneOnFacesAsTheyAre) {
    LandmarkOutliers outliers(shipped_template(Kind::lateral));
    for (const char* name : {"lateral-average.json", "lateral-class2.json", "lateral-openbite.json"}) {
        EXPECT_TRUE(outliers(sample(name)).empty()) << name;
        for (const char* slip : {"Go", "N", "Me", "PNS", "S"}) {
            for (const double mirror : {1.0, -1.0}) {
                Case record = sample(name);
                const double size = mirror < 0 ? 1.6 : 1;
                move(record, slip, 20, -22);
                for (Landmark& landmark : record.landmarks) landmark.position.x *= mirror;
                record.mm_per_pixel = *record.mm_per_pixel * size;
                const auto found = outliers(record);
                ASSERT_EQ(found.size(), 1) << name << " " << slip;
                EXPECT_EQ(found[0].name, slip);
                EXPECT_NEAR(found[0].mm, 29.7 * size, 8 * size);
                EXPECT_EQ(found[0].others, 49);  // the face lacks one of the 51
            }
        }
    }
    Case exchanged = sample("lateral-average.json");
    const auto at = [&](const char* name) { return std::ranges::find(exchanged.landmarks, name, &Landmark::name); };
    std::swap(at("ANS")->position, at("PNS")->position);
    EXPECT_EQ(outliers(exchanged).size(), 2);
    exchanged.landmarks.resize(7);
    EXPECT_TRUE(outliers(exchanged).empty());
}

TEST(LandmarkOutliers, AreNamedOnFrontalFilmsToo) {
    LandmarkOutliers outliers(shipped_template(Kind::frontal), Kind::frontal);
    EXPECT_TRUE(outliers(sample("frontal-average.json")).empty());
    EXPECT_TRUE(outliers(sample("lateral-average.json")).empty());
    for (const char* slip : {"ZAR", "AGL", "Me", "JR", "CG"}) {
        Case record = sample("frontal-average.json");
        if (*slip == 'C') record.landmarks.erase(record.landmarks.begin());  // another set of names between
        move(record, slip, -18, 20);
        const auto found = outliers(record);
        ASSERT_EQ(found.size(), 1) << slip;
        EXPECT_EQ(found[0].name, slip);
        EXPECT_NEAR(found[0].mm, 26.9, 8);
    }
}

TEST(LandmarkOutliers, AreRemarkedInEveryOutput) {
    const host_test::Folder folder;
    std::string text = host_test::bytes_of(std::string(SAMPLES) + "/lateral-average.csv");
    const std::size_t at = text.find("\nGo,786,1613");
    ASSERT_NE(at, std::string::npos);
    folder.add("slip.csv", text.replace(at, 12, "\nGo,986,1313"));
    const auto told = run({"analyze", "slip.csv", "--analysis", "Steiner", "--anaitem", ANALYSES});
    EXPECT_THAT(told.out, HasSubstr("Go lies 3"));
    EXPECT_THAT(told.out, HasSubstr("mm from where the other 49 landmarks expect"));
    run({"batch", "slip.csv", "--analysis", "Steiner", "--with", "slips", "-o", "t.csv", "--anaitem", ANALYSES});
    EXPECT_THAT(host_test::bytes_of("t.csv"), HasSubstr("landmark_far"));
    EXPECT_THAT(run({"trace", "slip.csv", "-o", "t.svg", "--anaitem", ANALYSES}).err + host_test::bytes_of("t.svg"),
                HasSubstr("expect it"));
}

}  // namespace
}  // namespace cephtool
