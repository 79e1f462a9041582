#include <gtest/gtest.h>

#include "tests/analysis/subject.h"

namespace tool_test {
namespace {

void expect_point(CPointD got, double x, double y, const std::string& of) {
    EXPECT_NEAR(got.x, x, 1e-6) << of;
    EXPECT_NEAR(got.y, y, 1e-6) << of;
}

TEST(PointExpression, ConstructsPoints) {
    struct {
        const char* text;
        double x, y;
    } const cases[] = {
        {"[S]", 100, 100},
        {"  , [N]", 400, 100},
        {"[s]", 0, 0},
        {"nothing", 0, 0},
        {"mid([S],[N])", 250, 100},
        {"mid([S] [N])", 250, 100},
        {"mid([S])", 50, 50},
        {"mid([S]),[N]", 50, 50},
        {"vertical([A],[S],[N])", 400, 100},
        {"cross([S],[N],[A],[N])", 400, 100},
        {"cross([S],[N],[Po],[Or])", 0, 0},
        {"mid([U1],cross([S],[N],[A],[N]))", 415, 245},
        {"extension([S],[N],25)", 450, 100},
        {"extension([S],[N],-25)", 350, 100},
        {"extension([S],[N])", 400, 100},
        {"extension([N],10)", -19.4028500029, -4.8507125007},
        {"extension([S],[N],(25))", 400, 100},
        {"mid(extension([S],[N],(25)),[A])", 400, 200},
        {"AngleBisector([N],[S],[A],50)", 400 - 35.3553390593, 100 + 35.3553390593},
        {"AngleBisector([N],[S],[A],50.9)", 400 - 35.3553390593, 100 + 35.3553390593},  // whole pixels
        {"AngleBisector([N],[S],[A],0)", 400, 100},
        {"AngleBisector([N],[S],[A])", 400, 100},
        {"mid(([S]),([N]))", 250, 100},
        {"[Pog(R)]", 370, 600},
        {"mid([Pog(R)],[Pog(R)],[Pog(R)])", 370, 600},
        {"[S", 100, 100},
    };
    for (const auto& c : cases) expect_point(small_face().point(c.text), c.x, c.y, c.text);
}

TEST(PointExpression, BlanksWhatItRead) {
    struct {
        const char *before, *after;
    } const cases[] = {{"mid([S],[N]) + 1", "             + 1"},
                       {"x [S],[N]", "     ,[N]"},
                       {"mid(mid([S],[N]),[A])+[B]", "                     +[B]"},
                       {"extension([S],[N],5),[B]", "                    ,[B]"},
                       {"EffectiveA(anything)[S]", "                    [S]"},
                       {"no point (here)", "no point (here)"}};
    for (const auto& c : cases) {
        std::string text = c.before;
        small_face().point_in(text);
        EXPECT_EQ(text, c.after);
    }
}

// By hand: N-A is vertical; U1R-U1 leans 26.565 degrees to it; A's shift is 0.4 mm a degree beyond 12.
TEST(PointExpression, EffectiveAFollowsTheUpperIncisor) {
    const double pixels = (26.565051177 - 12.0) * 0.4 / 0.5;
    expect_point(small_face().point("EffectiveA()"), 415 - pixels, 345, "EffectiveA");
    EXPECT_TRUE(Frontal({{"ANS", {5, 5}}, {"A", {7, 7}}}).point("EffectiveA()").IsPointNull());
}

TEST(PointExpression, NamesAreFoundFixedThenUserThenVirtual) {
    Lateral face = small_face();
    face.add_user("S", {1, 1});
    face.add_user("Foo", {2, 2});
    face.add_virtual("Foo", "[S]");
    face.add_virtual("Bar", "mid([Foo],[N])");
    expect_point(face.point("[S]"), 100, 100, "fixed");
    expect_point(face.point("[Foo]"), 2, 2, "user");
    expect_point(face.point("[Bar]"), 201, 51, "virtual");
    face.user_count = 65535;  // more than the record holds
    EXPECT_TRUE(face.point("[Nowhere]").IsPointNull());
    Frontal frontal({{"Me", {3, 4}}});
    EXPECT_TRUE(frontal.point("[S]").IsPointNull());
    expect_point(frontal.point("[Me]"), 3, 4, "frontal");
    EXPECT_TRUE(CCephCalc::PointPos(0, "S", nullptr, nullptr, nullptr, nullptr, nullptr).IsPointNull());
}

TEST(VirtualLandmark, EveryMemberOfACircleFailsWhereverTheWalkBegins) {
    struct {
        const char *name, *construction;
        bool resolves;
    } const landmarks[] = {{"V1", "mid([V2],[V3])", false}, {"V2", "[V1]", false},
                           {"V3", "[V2]", false},           {"Self", "[Self]", false},
                           {"Free", "mid([S],[V1])", true}, {"Plain", "[Free]", true},
                           {"P1", "mid([P2],[S])", false},  {"P2", "mid([P1],[N])", false},
                           {"Empty", "no point", false},    {"Open", "mid([S],[N]", true}};
    for (const auto& first : landmarks) {
        Lateral face = small_face();
        for (const auto& l : landmarks) face.add_virtual(l.name, l.construction);
        for (const auto& l : landmarks) {  // one expression that resolves them all, in two orders
            const CPointD point = face.point(std::string("mid([") + first.name + "],[" + l.name + "])");
            const CPointD other = face.point(std::string("mid([") + l.name + "],[" + first.name + "])");
            EXPECT_EQ(point, other) << first.name << ' ' << l.name;
            CPointD out(9, 9);
            const auto index = static_cast<std::size_t>(&l - landmarks);
            EXPECT_EQ(CCephCalc::GetVirtualPoint(0, 0.5, &face.virtuals[index], &face.virtual_count, face.virtuals,
                                                 &face.user_count, face.users, nullptr, nullptr, &face.record, &out),
                      l.resolves ? 1 : 0)
                << l.name;
            EXPECT_EQ(out.IsPointNull(), l.resolves ? 0 : 1) << l.name;
        }
    }
}

TEST(VirtualLandmark, TakesTheGivenPointsAndScale) {
    Lateral face = small_face();
    tagKPOINT construction = {"X", "extension([S],[N],10)"};
    tagPOINT fixed[LAT_POINT_COUNT] = {{0, 0}, {10, 0}};
    CPointD out;
    EXPECT_EQ(CCephCalc::GetVirtualPoint(0, 0.1, &construction, nullptr, nullptr, nullptr, nullptr, fixed, nullptr,
                                         &face.record, &out),
              1);
    expect_point(out, 110, 0, "given points");
}

TEST(VirtualLandmark, ALongChainIsFollowedToItsEnd) {
    std::vector<tagKPOINT> chain(3000);
    for (std::size_t i = 0; i < chain.size(); ++i) {
        std::snprintf(chain[i].Name, sizeof chain[i].Name, "V%zu", i);
        std::snprintf(chain[i].Construction, sizeof chain[i].Construction, "mid([V%zu],[V%zu])", i + 1, i + 1);
    }
    std::strcpy(chain.back().Construction, "[N]");
    Lateral face = small_face();
    unsigned short count = 3000;
    expect_point(CCephCalc::PointPos(0, "V0", &face.record, &count, chain.data(), nullptr, nullptr), 400, 100, "chain");
}

}  // namespace
}  // namespace tool_test
