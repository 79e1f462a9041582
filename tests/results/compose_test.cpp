#include <AnalysisFolder.h>
#include <ComposedAnalysis.h>
#include <DefinitionCheck.h>
#include <MeasuredAnalysis.h>
#include <gmock/gmock.h>

#include "cases/case_record.h"
#include "host/host_test.h"
#include "results/analysis_folder.h"

namespace cephtool {
namespace {

using host_test::read;
using testing::HasSubstr;
using tool::ComposedItem;

std::vector<ComposedItem> items_of(const Analysis& analysis) {
    std::vector<ComposedItem> items;
    for (std::size_t i = 0; i < analysis.items().size(); ++i) items.push_back({&analysis, i});
    return items;
}

Analysis lateral(const char* file, const std::string& text) {
    return *Analysis::from_text(tool::Kind::lateral, file, text);
}

std::string composed(std::span<const ComposedItem> items) {
    const auto text = tool::compose("Own", items);
    return text ? *text : "failed: " + text.reason();
}

void expect_no_faults(const std::string& text, tool::Kind kind, const std::string& of) {
    const CheckResult check =
        DefinitionCheck::Text(CheckFamily::definition, static_cast<int>(kind), text.data(), text.size());
    for (const CheckFinding& finding : check.findings)
        EXPECT_TRUE(finding.note) << of << ":" << finding.line << ": " << finding.message;
}

// Every patient in turn; both must say the same of each item.
void expect_same(const std::vector<ComposedItem>& items, const Analysis& own, const Case& face) {
    constexpr const char* teeth[] = {"I", "IIA", "IIIA", "IIIB", "IVA", "VA"};
    int turn = 0;
    for (const tool::Sex sex : {tool::Sex::male, tool::Sex::female})
        for (const double age : {2.0, 5.5, 7.3, 9.0, 12.49, 15.0, 16.2, 18.0, 40.0, 90.0}) {
            tool::Subject subject = subject_of(face);
            subject.sex = sex;
            subject.age_years = age;
            subject.dental_stage = tool::dental_stage_named(teeth[++turn % std::size(teeth)]);
            const tool::MeasuredAnalysis made = *measure_all(own, subject, tool::Shapes::left_out);
            std::map<const Analysis*, tool::MeasuredAnalysis> theirs;
            for (const auto& [analysis, place] : items) {
                if (!theirs.contains(analysis))
                    theirs.emplace(analysis, *measure_all(*analysis, subject, tool::Shapes::left_out));
                const tool::MeasuredItem& item = theirs.at(analysis).items[place];
                if (item.item->heading) continue;
                const std::string mark = " (" + short_name(*analysis) + ")";
                const std::string renamed = item.item->name.substr(0, 50 - mark.size()) + mark;
                const auto named = [&](const std::string& name) {
                    return std::ranges::find_if(made.items, [&](const tool::MeasuredItem& each) {
                        return each.item->name == name && !each.item->heading;
                    });
                };
                const auto found = named(renamed) != made.items.end() ? named(renamed) : named(item.item->name);
                const auto what = [](const tool::MeasuredItem& each) {
                    return std::tuple(each.state, each.value, each.mean, each.sd, each.deviation, each.value_text,
                                      each.item->sign, each.item->unverified, each.item->unit);
                };
                ASSERT_NE(found, made.items.end()) << renamed;
                EXPECT_EQ(what(*found), what(item)) << renamed << " at " << age << " years";
            }
        }
}

TEST(Compose, GivesEveryShippedItemItsOwnValueNormAndDeviation) {
    const AnalysisFolder folder(std::string(SAMPLES) + "/../../anaitem");
    int made = 0;
    for (const tool::Kind kind : tool::all_kinds) {
        const auto of_kind = static_cast<Kind>(tool::measured_on(kind));
        const char* const sample = of_kind == Kind::lateral   ? "lateral-class2.json"
                                   : of_kind == Kind::frontal ? "frontal-average.json"
                                                              : "model-average.json";
        const Case face = read(sample, host_test::bytes_of(std::string(SAMPLES) + "/" + sample));
        const auto analyses = folder.analyses(kind);
        for (std::size_t i = 0; i < analyses.size(); ++i) {
            std::vector<ComposedItem> items = items_of(analyses[i]),
                                      more = items_of(analyses[(i + 1) % analyses.size()]);
            for (const bool with_next : {false, true}) {
                if (with_next) items.insert(items.end(), more.begin(), more.end());
                const auto text = tool::compose("Own (\u81ea\u4f5c)", items);
                if (!text) {
                    EXPECT_THAT(text.reason(), HasSubstr("by the teeth"));
                    continue;
                }
                ++made;
                expect_no_faults(*text, kind, analyses[i].title());
                expect_same(items, *Analysis::from_text(kind, "Own.txt", *text), face);
            }
        }
    }
    EXPECT_GT(made, 40);
}

const std::string points = "len([S],[N])";

TEST(Compose, RenamesWhatDiffersAndBringsWhatIsReferredTo) {
    const Analysis a = lateral("A.txt", "title:\nT\nCalc:\nX=" + points + "\nY=case(\"X\")*2\nMean:\nX=1\nSD:\nX=1\n"),
                   b = lateral("B.txt", "title:\nT\nCalc:\nX=" + points +
                                            "*2\nY=case(\"X\")*2\nMean:\nX=mean(\"Y\")*1:1\nY=4\n"
                                            "SD:\nX=1\nParam:\nJapanese X=\x83\x47\nSign X=on\n"),
                   same =
                       lateral("C.txt", "title:\nT\nCalc:\nY=case(\"X\")*2\nX=" + points + "\nSD:\nX=1\nMean:\nX=1\n");
    const ComposedItem items[] = {{&a, 1}, {&b, 1}, {&same, 0}};
    const std::string text = composed(items);
    EXPECT_THAT(text, HasSubstr("\r\nY=case(\"X\")*2\r\nT\r\nY (B)=case(\"X (B)\")*2\r\nReferred to\r\nX=" + points +
                                "\r\nX (B)=" + points + "*2\r\n\r\n"));
    EXPECT_THAT(text, HasSubstr("\r\nX (B)=mean(\"Y (B)\")*1:1\r\n"));
    EXPECT_THAT(text, HasSubstr("\r\nSign X (B)=on\r\nJapanese X (B)=\x83\x47 (B)\r\n"));
    // What counts as 0 in its own file must not find another's item.
    const Analysis lacking = lateral("L.txt", "title:\nT\nCalc:\nZ=case(\"X\")\n");
    const ComposedItem with_x[] = {{&a, 0}, {&lacking, 0}};
    EXPECT_EQ(composed(with_x), "failed: \"Z\" of L.txt refers to \"X\", which is no item there");
    // A long way of references, with many ways along it, is walked once.
    std::string chain = "title:\nT\nCalc:\nX30=" + points + "\n";
    for (int i = 0; i < 30; ++i) {
        const std::string next = "case(\"X" + std::to_string(i + 1) + "\")";
        chain += "X" + std::to_string(i) + "=" + next + "*" + next + "*" + next + "\n";
    }
    const Analysis one = lateral("A.txt", chain), other = lateral("B.txt", chain);
    const ComposedItem twice[] = {{&one, 1}, {&other, 1}};
    EXPECT_THAT(composed(twice), testing::Not(HasSubstr(" (B)=")));
}

TEST(Compose, CutsStagesAtAllBorders) {
    const auto with = [](const char* file, const char* stages, const char* norms) {
        return lateral(file, std::string("title:\nT\n") + stages + "Calc:\nX" + file[0] + "=" + points + "\n" + norms);
    };
    const Analysis a = with("A.txt", "Stage:\nSmall=6-9\nTall=9-\n", "Mean:\nXA=1,2\nSD:\nXA=1\nParam:\nAges=6-18\n"),
                   b = with("B.txt", "Stage_M:\nBoy=4-8\nParam:\nStage_F:\nGirl=4-12\n",
                            "Mean:\nXB=5,6\nParam:\nAges=12-\n"),
                   teeth = with("D.txt", "Stage_Type:\nHellman\nStage:\nI=I-IIIA\nII=IIIA-\n", "Mean:\nXD=1,2\n");
    const ComposedItem both[] = {{&a, 0}, {&b, 0}};
    const std::string text = composed(both);
    EXPECT_THAT(
        text,
        HasSubstr("Stage:\r\nBoy/Girl=4-6\r\nSmall/Boy/Girl=6-8\r\nSmall/Girl=8-9\r\nTall/Girl=9-12\r\nTall=12-\r\n"));
    EXPECT_THAT(text, HasSubstr("\r\nXA=,1,1,2,2\r\n"));
    // Where the mean has no column the item has no SD either, and a formula that takes them has no value.
    EXPECT_THAT(text, HasSubstr("\r\nXA=,1,1,1,1\r\n"));
    const Analysis taken = with("T.txt", "Stage:\nSmall=6-9\nTall=9-\n", "Y=1+mean(\"XT\")\nMean:\nXT=1,2\n");
    const ComposedItem alone[] = {{&taken, 0}, {&taken, 1}}, lacking[] = {{&taken, 1}, {&b, 0}};
    EXPECT_THAT(composed(alone), HasSubstr("\r\nXT=1,2\r\n"));
    EXPECT_THAT(composed(lacking), HasSubstr("failed: \"Y\" of T.txt takes a norm of \"XT\", which it has for some"));
    EXPECT_THAT(text, HasSubstr("Mean_M:\r\nXB=5,5,,,\r\n"));
    EXPECT_THAT(text, HasSubstr("Mean_F:\r\nXB=5,5,5,5,\r\n"));
    EXPECT_THAT(text, HasSubstr("Param:\r\nAges=12-18\r\n"));
    const ComposedItem unlike[] = {{&a, 0}, {&teeth, 0}};
    EXPECT_THAT(composed(unlike), HasSubstr("failed: The norms of A.txt go by the age, those of D.txt by the teeth"));
    const Analysis frontal =
        *Analysis::from_text(tool::Kind::frontal, "F.txt", "title:\nT\nCalc:\nX=len([ANS],[Me])\n");
    const ComposedItem kinds[] = {{&a, 0}, {&frontal, 0}};
    EXPECT_THAT(composed(kinds), HasSubstr("failed: Items of A.txt and F.txt are not measured on the same kind"));
    EXPECT_THAT(composed({}), HasSubstr("failed: There is no item"));
    const Analysis open = with("O.txt", "Stage:\nSmall=6-9\nTall=9-\n", "Mean:\nXO=1,2(3\n");
    const ComposedItem ends_open[] = {{&open, 0}};
    EXPECT_THAT(composed(ends_open), HasSubstr("failed: A norm of \"XO\" of O.txt has a bracket that is not closed"));
}

TEST(ComposeCommand, TakesItemsByNameWithCommasInThem) {
    const host_test::Folder folder;
    folder.add("c/CalcForm/list.txt", "A.txt\r\n");
    folder.add("c/CalcForm/A.txt",
               "title:\nFirst: one\nCalc:\nZ, in front=" + points + "\nZ=" + points + "*2\nY=" + points + "*3\n");
    const auto items = [](const std::string& wanted) {
        const auto outcome = host_test::run({"compose", "--anaitem", "c", wanted});
        const std::string all = outcome.out + outcome.err;
        return all.substr(std::min(all.find("Calc:"), all.size()));
    };
    EXPECT_THAT(items("a:z, in front,y"),
                testing::StartsWith("Calc:\r\nZ, in front=len([S],[N])\r\nY=len([S],[N])*3\r\n\r\n"));
    EXPECT_THAT(items("First: one:Z,Y"), HasSubstr("Calc:\r\nZ=len([S],[N])*2\r\nY="));
    EXPECT_THAT(items("c/CalcForm/A.txt"), HasSubstr("Z, in front="));
    EXPECT_THAT(host_test::run({"compose", "--anaitem", "c", "A:Z,Q"}).err, HasSubstr("\"A\" has no item \"Q\""));
    EXPECT_THAT(host_test::run({"compose", "--anaitem", "c", "Aa:Z"}).err, HasSubstr("there is no analysis \"Aa\""));
}

}  // namespace
}  // namespace cephtool
