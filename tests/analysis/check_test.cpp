#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <random>
#include <sstream>

#include "DefinitionCheck.h"
#include "analysis/check/findings.h"
#include "analysis/definition_file.h"
#include "analysis/formula_names.h"
#include "analysis/growth_stage.h"
#include "analysis/item_text.h"
#include "analysis/point_expression.h"
#include "tests/analysis/subject.h"

namespace tool_test {
namespace {

CheckResult checked(const std::string& text, CheckFamily family = CheckFamily::definition, int kind = 0) {
    return DefinitionCheck::Text(family, kind, text.data(), text.size());
}

bool has_fault(const CheckResult& result) {
    return std::ranges::any_of(result.findings, [](const CheckFinding& finding) { return !finding.note; });
}

// "line:column some of its words", with "note" behind the place of a note; in the order of the text.
using Expected = std::vector<std::string>;

void expect_findings(const CheckResult& result, const Expected& expected, const std::string& row) {
    std::string all;
    std::size_t met = 0;
    for (std::size_t i = 0; i < result.findings.size(); ++i) {
        const CheckFinding& f = result.findings[i];
        const std::string place = std::to_string(f.line) + ":" + std::to_string(f.column) + (f.note ? " note " : " ");
        const std::string message(f.message);
        all += "  " + place + message + "\n";
        if (i < expected.size() && expected[i].starts_with(place))
            met += message.find(expected[i].substr(place.size())) != std::string::npos;
    }
    EXPECT_TRUE(met == expected.size() && met == result.findings.size()) << row << "\n" << all;
}

TEST(CheckFormula, SaysWhatTheEvaluatorMakesOfIt) {
    struct {
        const char* formula;
        int column;  // in the formula; 0: nothing is wrong
        const char* words;
    } const cases[] = {
        {"len([S],[N])", 0, ""},
        {"len ([S] [N])*100/len([A],[B])", 0, ""},
        {"-len([S],[N])*2-(len([A],[B])-1)/2", 0, ""},
        {"len([S],[N])/(len([S],[N])+len([A],[B]))*100", 0, ""},
        {"(len([S],[N])-1)*(len([A],[B])+1)", 0, ""},
        {"(len([S],[N])-1)-(len([A],[B])+1)", 0, ""},
        {"angle1([S],mid([N],cross([A],[B],[S],[N])),EffectiveA())", 0, ""},
        {"len([S],extension([S],AngleBisector([A],[B],[N],5),-2.5))>=3", 0, ""},
        {"switch(len([S],[N])>3,len([A],[B])<2)", 0, ""},
        {"switch(1,2);\"a)\";\"\x83\x5C\";\"c\":12", 0, ""},
        {"switch(1,2);len([S],[N]);\"text\"", 0, ""},
        {"case(\"Y lenR switch(*)\")", 0, ""},
        {"(len([S],[N])*2)-(len([A],[B])*5)", 1, "remove them"},
        {"(angle1([A],[B],[N]))+len([S],[N])*2", 1, "remove them"},
        {"(len([S],[N])+1)/((len([A],[B])+1)+2)", 18, "ends at its first"},
        {"2*-len([S],[N])", 3, "a sign right behind an operator"},
        {"2*--len([S],[N])", 4, "two signs"},
        {"12.5", 1, "only a number gives 0"},
        {"len([S],\t[N])\t+1", 14, "a tab"},
        {"switch(1,2)+3", 1, "stands alone"},
        {"2+", 2, "missing behind"},
        {"len([S],[N])=<5", 14, "missing in front of \"<\""},
        {"len([S],[N])5", 13, "no operator"},
        {"(2 [S])*2", 4, "does not belong here"},
        {"1.2.3*2", 1, "no number"},
        {"len([S],[N]", 4, "\"(\" is never closed"},
        {"len([S],[N]))", 13, "nothing opens"},
        {"len([S,[N])", 5, "\"[\" is never closed"},
        {"case(\"Y lenR switch(*))", 6, "quote is never closed"},
        {"len([S])", 1, "takes 2 points and has 1"},
        {"angle2([S],[N],[A],[B],[S])", 1, "takes 4 points and has 5"},
        {"len([S],mid([N]))", 9, "takes 2 points and has 1"},
        {"len([S],extension([S],[N]))", 9, "the number is missing"},
        {"len([S],len([N],[A]))", 9, "gives a value"},
        {"len([S],4)", 9, "is no point"},
        {"mid([S],[N])", 1, "gives a point"},
        {"[S]", 1, "a landmark alone"},
        {"\"Y\"", 1, "stands only in case()"},
        {"angle5([S],[N],[A])", 1, "did you mean \"angle1\"?"},
        {"Model([UCAW])", 1, "measures casts"},
        {"len([ N ],[A])", 6, "write \"N\""},
        {"len([Pog(S)],[A])", 6, "write \"Pog(s)\""},
        {"len([],[A])", 6, "without a name"},
        {"len([abcdefghijabcdefghijabcdefghij12],[A])", 6, "longer than any"},
        {"case(\"y lenr switch(*)\")", 7, "did you mean \"Y lenR switch(*)\"?"},
        {"mean(\"Y lenR switch(*)\")", 7, "has no mean"},
        {"case(Y)", 1, "double quotes"},
        {"case(\"X\")", -1, "refers to itself"},
        {"case(\"a;b\")", 8, "\";\" ends the formula"},
        {"case(\"a:b\")", 8, "\":\" starts the item's type"},
        {"len([S],[N]):12345", 13, "at most four digits"},
        {"len([S],[N]):1a:2", 13, "at most four digits"},
        {"switch(1,2);", 13, "alternative is missing"},
        {"switch(1,2);\"a\";3*2", 17, "every alternative is a text"},
        {"switch(1,2);case(\"Y\")", 13, "can't refer to an item"},
        {"switch(1,2);5", 13, "only a number gives 0"},
        {";\"a\"", 1, "formula is missing"},
    };
    for (const auto& c : cases) {
        const std::string text = std::string("title:\nT\nCalc:\nY lenR switch(*)=len([S],[N])\nX=") + c.formula + "\n";
        const Expected one{"5:" + std::to_string(c.column + 2) + " " + c.words};
        expect_findings(checked(text), c.column == 0 ? Expected() : one, c.formula);
    }
    const std::string many = "len([S],[N])" + [] {
        std::string sum;
        for (int i = 0; i < 50; ++i) sum += "+len([S],[N])";
        return sum;
    }();
    expect_findings(checked("title:\nT\nCalc:\nX=" + many), {"4:3 more than 99 steps"}, many);
    expect_findings(checked("title:\nT\nCalc:\nX=" + std::string(70, '(') + "1"), {"4:63 too many brackets"}, "deep");
    expect_findings(checked("title:\nT\nCalc:\nX=Model([UCAW])/Model([UCAX])\nY=Model ([PLTU])-Model( [ATR])\n"
                            "Z=Model([UCAW]+1)\n",
                            CheckFamily::definition, 2),
                    {"4:23 no measure of a cast", "5:18 without blanks round it", "6:3 nothing else"}, "cast");
    expect_findings(checked("title:\nT\nCalc:\nX=len([Me],EffectiveA())\n", CheckFamily::definition, 1),
                    {"4:12 lateral films only"}, "frontal");
}

// A formula as a tree: its text with all its brackets, and what mathematics makes of it.
struct Tree {
    std::string text;
    double value;
};
Tree random_tree(std::mt19937& random, Lateral& face, int depth) {
    static const char* const leaves[] = {"len([S],[A])", "angle1([S],[N],[A])", "lenR([Me],[Go])", "7.5"};
    const unsigned choice = random() % 8;
    if (depth == 0 || choice == 0) {
        const std::string leaf = leaves[random() % 4];
        return {leaf, leaf == "7.5" ? 7.5 : face.calc(leaf)};
    }
    Tree left = random_tree(random, face, depth - 1), right = random_tree(random, face, depth - 1);
    const auto bracketed = [&](Tree& tree) {
        if (tree.text.find_first_of("+-*/", 1) != std::string::npos || random() % 8 == 0)
            tree.text = '(' + tree.text + ')';
    };
    bracketed(left), bracketed(right);
    switch (choice % 4) {
        case 0: return {left.text + "+" + right.text, left.value + right.value};
        case 1: return {left.text + "-" + right.text, left.value - right.value};
        case 2: return {left.text + "*" + right.text, left.value * right.value};
        default: return {left.text + "/" + right.text, left.value / right.value};
    }
}

TEST(CheckFormula, WhatPassesIsComputedAsMathematicsDoes) {
    std::mt19937 random(20);
    Lateral face = small_face();
    int passed = 0, stopped = 0;
    for (int i = 0; i < 4000; ++i) {
        const Tree tree = random_tree(random, face, 3);
        const double value = face.calc(tree.text);
        const bool same = value == tree.value || std::abs(value - tree.value) <= 1e-9 * std::abs(tree.value) ||
                          !std::isfinite(tree.value);
        if (has_fault(checked("title:\nT\nCalc:\nX=" + tree.text + "\n"))) {
            ++stopped;
            EXPECT_FALSE(same && tree.text.find('(', 1) == std::string::npos) << tree.text;
        } else {
            ++passed;
            EXPECT_TRUE(same) << tree.text << " is " << value << ", not " << tree.value;
        }
    }
    EXPECT_GT(passed, 400);
    EXPECT_GT(stopped, 400);
}

// As the number of slips is defined: the least of what each way to make the ends alike costs.
std::size_t slips(std::string_view a, std::string_view b) {
    if (a.empty() || b.empty()) return a.size() + b.size();
    const std::string_view a_rest = a.substr(1), b_rest = b.substr(1);
    return std::min({slips(a_rest, b_rest) + (a[0] != b[0]), slips(a_rest, b) + 1, slips(a, b_rest) + 1});
}

TEST(MeantName, IsOneSlipAwayAmongNamesOfFourLettersOrMore) {
    std::vector<std::string> names = {""};
    for (std::size_t i = 0; names[i].size() < 5; ++i)
        for (const char c : {'a', 'b'}) names.push_back(names[i] + c);
    for (const std::string& name : names)
        for (const std::string_view other : names)
            EXPECT_EQ(tool::meant_name(name, {&other, 1}).data() == other.data(),
                      slips(name, other) == 1 && std::max(name.size(), other.size()) >= 4)
                << name << ' ' << other;
}

TEST(CheckDefinition, FindsWhatIsNeverReadOrMisread) {
    const std::string fifty(50, 'n'), items = "title:\nT\nCalc:\nA=len([S],[N])\nB=len([S],[A])\n";
    std::string hundred_values, hundred_stages;
    for (int i = 0; i < 100; ++i) {
        hundred_values += "1,";
        hundred_stages += "s=" + std::to_string(i) + "-" + std::to_string(i + 1) + "\n";
    }
    struct {
        const char* name;
        std::string text;
        Expected expected;
    } const cases[] = {
        {"keys",
         "title: Downs\n a Title:\nA=2\nplain remark [x]\n\nCalc :\nCalc\x81\x46\nMean: \ntitle:\nT\nMeans:\nCalc:\n",
         {"1:1 text stands behind the key", "2:1 nothing in front", "3:1 nothing in front of the first key",
          "4:1 remarks below the first line", "6:1 blanks stand round", "7:1 a wide one", "8:1 blanks stand round",
          "11:1 \"Means:\" is no key"}},
        {"one line", "title:\nSD: of what\nmore\nComment:\nMean: of what\nmore\nCalc:\n", {"3:1 note only one line"}},
        {"no title or comment", "Comment:\nCalc:\n", {"0:0 note no title", "2:1 this key is read as the comment"}},
        {"names",
         items + fifty + "x=len([S],[N])\nno formula\nC=\n=len([S],[N])\nA=len([S],[N])*2\n\x83\x5C=[S]\n",
         {"6:51 cut to 50 bytes", "7:1 note without \"=\" is a heading", "8:1 without a formula",
          "9:1 a name is missing", "10:1 only that one is read", "11:3 a landmark alone"}},
        {"second set", items + "Calc2:\nA=len([S],[N])\nB=len([S],[A])*2\n", {"8:1 only that one is read"}},
        {"norms",
         items + "Mean:\nA=1,2,3\nB=5\nC=1\nb=2\nA=2\nSD:\nA=1,2\nB=0\nSD_F:\nB=1\n",
         {"9:1 no item \"C\"", "10:1 did you mean \"B\"?", "11:1 already gives this norm", "13:1 2 SDs for 3 means",
          "14:3 an SD of 0", "16:1 already gives this norm"}},
        {"norms of one sex",
         items + "Mean_M:\nA=1\nMean:\nA=2\nSD_M:\nA=1\nB=1\nSD_F:\nA=1\n",
         {"5:1 note an item without a norm", "12:1 an SD without a mean"}},
        {"lonely norms",
         items + "Mean_F:\nA=1\n",
         {"4:1 note a mean for women only", "5:1 note an item without a norm", "7:1 note a mean without an SD"}},
        {"norm values",
         items +
             "Mean:\nA=+1,.5, 5,01,1e3, ,-0.5,,12.\nB=len([S],[N])*100,case(\"A\"),len([S]):1,case(\"Z\"):1,len([S],[A])+1:2," +
             std::string(120, '1') + "\nSD:\nA=3\nB=-3\n",
         {"7:3 not read as a number", "7:6 not read", "7:9 not read", "7:12 not read", "7:15 not read",
          "7:19 a blank counts", "8:3 with its decimals behind", "8:20 with its decimals", "8:30 takes 2 points",
          "8:47 no item \"Z\"", "8:170 cut here", "11:3 an SD below 0"}},
        {"more bands than a code has digits",
         items + "Mean:\nA=" + hundred_values + "1\nB=" + hundred_values.substr(2) +
             "1\nSD:\nA=1\nB=1\nStage_Type:\nAge\nStage:\n" + hundred_stages + "t=100-101\nu=101-102\n",
         {"7:203 more than 100 values", "115:1 more than 100 stages"}},
        {"parameters",
         items +
             "Param:\nAges=18\nAges=12-17\nages=1-2\nOther=1\nSign A=in front\nSign a=x\nSign B=\nSign A=again\nLine\n",
         {"7:5 no range of ages", "8:1 already says this", "9:1 write \"Ages\"", "12:1 no item \"a\"",
          "13:1 say behind", "14:1 already says this"}},
        {"names and marks",
         items +
             "Mean:\nA=1\nSD:\nA=1\nParam:\nJapanese A=x\nJapanese A=y\nJapanese C=x\nJapanese B=\njapanese B=x\n"
             "Unverified A=x\nUnverified B=x\nUnverified C=x\nunverified C=x\nPopulation=\nVariant of=\nVariants=\n",
         {"5:1 note an item without a norm", "12:1 already says this", "13:1 finding \"C\"",
          "14:1 write the Japanese name", "15:1 write \"Japanese \"", "17:1 has no norm", "18:1 no item \"C\"",
          "19:1 write \"Unverified \"", "20:1 whose norms these are", "21:1 which file"}},
        {"names of all that is shown",
         "title:\nT\nCalc:\nHead\nA=len([S],[N])>1;\"b (c)\";\"d\"\nStage:\ne=1-2\nParam:\nJapanese Head=x\nJapanese b (c)=x\n"
         "Japanese d=x\nJapanese e=x\nVariant of=F.txt\nPopulation=Thai\n",
         {"4:1 note a heading"}},
        {"ages of one year", items + "Param:\nAges=9-9\n", {}},
        {"circles",
         "title:\nT\nCalc:\nA=sdu(\"B\")*1\nB=len([S],[N])+case(\"C\")\nC=case(\"B\")*2\nD=case(\"A\")\nMean:\n"
         "B=len([S],[N])-mean(\"B\"):1\nSD:\nB=1\n",
         {"4:1 note an item without", "5:1 refers to itself", "6:1 note an item without", "6:1 refers to itself",
          "7:1 note an item without", "9:1 refers to itself"}},
        {"deviation by hand", "title:\nT\nCalc:\nA=(len([S],[N])-mean(\"A\"))/sdv(\"A\")\nMean:\nA=1\nSD:\nA=1\n", {}},
        {"landmarks of one's own",
         "title:\nT\nCalc:\nA=len([Foo],[Foo])+len([toolong],[UCWR])\nB=len([C3ua],[C4lp])\n",
         {"4:8 note landmark of the user's own", "4:25 note virtual landmark", "4:35 note landmark of the user's own"}},
        {"stages",
         "title:\nT\nStage:\na=0-6.5\nb=6-7\nc=9-8\nd=8-8\ne\nf=x-9\ng=0-\nh=20\ni=7-8\n" + fifty +
             "n=8-9\nj=6.5-7.5\n",
         {"5:3 overlaps that of \"a\"", "6:3 ends where it starts", "7:3 ends where it starts", "8:1 without a range",
          "9:3 \"x\" is no number", "10:3 needs its end", "13:50 cut to 49 bytes", "14:3 overlaps that of \"i\""}},
        {"dental stages",
         "title:\nT\nStage_Type:\nHellman\nStage:\nb=IIIA-\na=I-IIIA\nc=IIB-IIC\nd=3-4\n",
         {"8:3 \"IIB\" is no dental stage", "9:3 \"3\" is no dental stage"}},
        {"stage types",
         "title:\nT\nStage_Type:\nage \nStage_Type:\nParam:\n",
         {"4:1 exactly that", "6:1 read as the type"}},
        {"stage sections",
         "title:\nT\nStage_M:\na=0-5\nStage_F:\na=0-5\nStage:\nb=5-6\nParam:\nStage_F:\nc=6-7\n",
         {"7:1 never read"}},
        {"second stages", "title:\nT\nStage2:\na=0-5\nMean:\nA=3\n", {"5:1 of the second set", "6:1 no item \"A\""}},
    };
    for (const auto& c : cases) expect_findings(checked(c.text), c.expected, c.name);
}

// Every text of up to `longest` parts.
void for_all_texts(const std::vector<std::string>& parts, int longest,
                   const std::function<void(const std::string&)>& visit) {
    std::vector<std::string> texts{""};
    for (int length = 0; length < longest; ++length) {
        std::vector<std::string> longer;
        for (const std::string& text : texts)
            for (const std::string& part : parts) visit(longer.emplace_back(text + part));
        texts = std::move(longer);
    }
}

TEST(CheckFormula, ArgumentsThatPassAreCompleteAndReadToTheirEnd) {
    Lateral face = small_face();
    tool::Landmarks landmarks(0, &face.record, nullptr, nullptr, nullptr);
    tool::PointReader points(landmarks);
    int passed = 0;
    for_all_texts({"[S]", ",", "mid(", "extension(", ")", "-2"}, 5, [&](const std::string& middle) {
        const std::string arguments = "([N]," + middle + ")";
        if (has_fault(checked("title:\nT\nCalc:\nX=len" + arguments + "\n"))) return;
        ++passed;
        const auto read = points.arguments(arguments, 2);
        EXPECT_TRUE(read.complete && read.end == arguments.size()) << arguments;
    });
    EXPECT_GT(passed, 5);
}

TEST(CheckDefinition, NormsPassThatTheEngineTakesAsTheyStand) {
    for_all_texts({"0", "5", ".", "-", ",", "+", " "}, 4, [](const std::string& norms) {
        const std::string text = "title:\nT\nCalc:\nA=len([S],[N])\nMean:\nA=" + norms + "\n";
        const AnalysisSheet sheet(0, text.data(), text.size());
        bool as_written = true;
        std::istringstream fields(norms + ",");
        int band = 0;
        for (std::string field; std::getline(fields, field, ','); ++band) {
            const std::string taken(sheet.Get_MeanSD("A", 0, {.band = band}, 1.1, 1));
            as_written &= field.empty() || (taken == field && field.find_first_not_of(' ') != std::string::npos);
        }
        if (norms.find_first_not_of(' ') == std::string::npos) as_written = false;
        EXPECT_EQ(!has_fault(checked(text)), as_written) << norms;
    });
}

TEST(CheckDefinition, StageSectionsPassWhoseLinesAreReadAsStagesAndNoOthers) {
    for_all_texts(
        {"Stage:\n", "Stage_M:\n", "Stage_F:\n", "Stage2:\n", "Mean:\n", "Calc2:\n", "a=1-2\n"}, 5,
        [](const std::string& text) {
            const CheckResult result = checked(text);
            const bool passes = std::ranges::none_of(result.findings, [](const CheckFinding& finding) {
                return finding.message.Find("starts none") >= 0 || finding.message.Find("second set ends") >= 0;
            });
            bool as_meant = true;
            for (const int sex : {1, 2})
                for (const bool second : {false, true}) {
                    std::vector<const char*> meant, read;
                    int section = 0;
                    tool::for_each_line(text, [&](std::string_view line, int code) {
                        const int in_set = section - (second ? 100 : 0);
                        if (code != 0)
                            section = code;
                        else if (!line.empty() && (in_set == 3 || in_set == 3 + sex))
                            meant.push_back(line.data());
                        return false;
                    });
                    tool::for_each_stage(text, sex, second,
                                         [&](const tool::StageLine& line) { read.push_back(line.name.data()); });
                    as_meant &= meant == read;
                }
            EXPECT_EQ(passes, as_meant) << text;
        });
}

TEST(CheckText, FindsWhatIsNoCodePage932) {
    struct {
        std::string text;
        Expected expected;
    } const cases[] = {
        {"title:\n\xE6\xAD\xAF\xE5\x88\x97\n", {"0:0 this is UTF-8"}},
        {"\xFF\xFE"
         "t\0i\0",
         {"0:0 this is UTF-16"}},
        {"title:\n\xC3\xBF\n", {}},
        {"title:\n\x83\x5C\x85\x40\x82\n", {"2:2 byte 85 40 is no character", "2:3 byte 82 begins"}},
        {std::string("title:\nA\0B\tC\rD\x80\r\n", 17),
         {"2:2 byte 00 ends", "2:3 note only one line", "2:6 byte 0D is a control", "2:8 byte 80 is"}},
        {"title:\nT\n" + std::string(30, '\x01'), {"0:0 no text in code page 932"}},
    };
    for (auto c : cases) {
        CheckResult result = checked(c.text);
        if (c.text.ends_with('\x01')) result.findings.resize(1);
        expect_findings(result, c.expected, c.text);
    }
}

TEST(CheckOtherFiles, FindsWhatIsNeverReadOrMisread) {
    std::string full = "title:\nT\nSuppLine:\n";
    for (int i = 0; i < 30; ++i) full += "[S]-[N]\n";
    struct {
        const char* name;
        CheckFamily family;
        std::string text;
        Expected expected;
    } const cases[] = {
        {"attributes",
         CheckFamily::mode,
         "title:\nT\nSuppLine:\nColor=1,2,3\nLine=BOLD\nDecimal=0.5\nPos=a\nSize=4\nsize=4\nLINE=BOLD\nColour=1,2,3\nColor=1,2\n"
         "color=1,x,256\nDecimal=0.50\nSize=x\n=SNA\n=\n[S]-[N\n[S]-[N]\n[s]-[Pog(s)]\n\n[End]\nrest\nrest\n",
         {"9:1 write Size=", "10:1 write \"Line=\"", "11:1 no attribute", "12:1 three numbers", "13:9 \"x\" is no part",
          "13:11 \"256\" is no part", "14:9 counts as 2 decimals", "15:6 no whole number", "17:1 without a name",
          "18:1 no line [A]-[B]", "20:2 write \"S\"", "20:6 cut to 5 bytes", "23:1 note nothing behind [End]"}},
        {"headers",
         CheckFamily::mode,
         "Size=2\npoint:\nPoint: S\nPoint:\nS\nfoo\nSuppLine: \n",
         {"0:0 without a title", "1:1 nothing in front of title:", "2:1 write exactly \"Point:\"",
          "3:1 exactly \"Point:\"", "6:1 note in no table", "7:1 exactly \"SuppLine:\""}},
        {"empty", CheckFamily::mode, "title:\nT\n", {"0:0 shows nothing"}},
        {"thirty lines", CheckFamily::mode, full + "\n[End]\n", {}},
        {"more lines", CheckFamily::mode, full + "\nPoint:\nS\n", {"35:1 nothing is read behind the 30 lines"}},
        {"modes",
         CheckFamily::mode_list,
         "1,a.txt\n\nb.txt\nx,c.txt\n2,A.TXT\n3,\n",
         {"3:1 without a comma", "4:1 \"x\" is no number", "5:3 listed twice", "6:1 name is missing"}},
        {"eras",
         CheckFamily::eras,
         "[MAIN]\nn=2\n[ERA_RANGE]\n-1=-1926.12.24\n0=1926.12.25-1989.01.07\n1=1989.01.08-\n[ERA_NAME]\n0=S\n1=H\n"
         "[ERA_CODE]\n0=S\n1=H\n",
         {}},
        {"bad eras",
         CheckFamily::eras,
         "[MAIN]\nn=4\nn=5\n[ERA_RANGE]\n0=1926.12.25-1989.01.07\n1=1989.01.07-2000.12.31\n2=2019.5.1-\n"
         "3=2020.01.01-2019.12.31\n4=2020.01.01-\n"
         "[ERA_NAME]\n0=S\n1=H\n3=R\n2=" +
             std::string(101, 'x') + "\n[ERA_COD]\n",
         {"0:0 era 0 has no value in [ERA_CODE]", "0:0 era 1 has", "0:0 era 2 has", "0:0 era 3 has",
          "6:3 overlaps the one before", "7:3 no span of dates", "8:3 ends before it", "9:1 never read",
          "14:103 cut to 100 bytes"}},
        {"era count", CheckFamily::eras, "[MAIN]\nn=two\n", {"2:3 \"two\" is no number of eras"}},
        {"no eras", CheckFamily::eras, "", {"0:0 number of eras is missing"}},
        {"bone age",
         CheckFamily::bone_age,
         "[CVB_AGE]\nPARAM_M0=0.8x\nPARAM_M1=\nPARAM_M2=1\nPARAM_M3=1\nPARAM_M3=2\nPARAM_F4=1\nPARAM_F0=1\nPARAM_F1=1\n"
         "PARAM_F2=-1e-3\n",
         {"0:0 note PARAM_F3 is missing", "2:10 is no number", "3:10 is no number", "6:1 only that one is read",
          "7:1 never read (did you mean \"PARAM_F0\"?)"}},
        {"errors of landmarks",
         CheckFamily::landmark_errors,
         "; ours\nS=1,1\nLateral:\nS=0.5,1.25,12,we, all\nS=1,1\nN=1\nN=-1,2\nA=1,x\nB=1,2,few\npo=1,1\nT1=1,1\nToolong=1,1\n"
         "words\nMe=1,101\n*=1,1\nB=1,1,assumed,us\nOr=1,1,Assume\n",
         {"2:1 in front of", "5:1 further up", "6:1 \"\" is no number", "7:1 \"-1\" is no number", "8:1 \"x\"",
          "9:1 \"few\"", "10:1 did you mean \"Po\"",
          "11:1 note \"T1\" is in no table of landmarks; it can be one of the user's own", "12:1 one to five bytes",
          "13:1 no landmark's error", "14:1 \"101\"", "17:1 \"Assume\""}},
        {"no bone age", CheckFamily::bone_age, "PARAM_M0=1\n", {"0:0 no section [CVB_AGE]"}},
    };
    for (const auto& c : cases) expect_findings(checked(c.text, c.family), c.expected, c.name);
}

TEST(CheckFolder, FollowsTheListsAsTheEngineDoes) {
    const AnalysisFolder folder;
    const std::string good = "title:\nT\nCalc:\nA=len([S],[N])\n", bad = "title:\nT\nCalc:\nA=\n";
    folder.write("CalcForm/list.txt", "A.txt\r\ngone.txt\r\nsub\\C.txt\r\n");
    folder.write("CalcForm/A.txt", bad);
    folder.write("CalcForm/sub/C.txt", bad);
    folder.write("CalcForm/Ricketts.txt", "title:\nT\nStage_Type:\nvalue\nStage:\na=1-2\n");
    folder.write("CalcForm/B.txt", bad);
    folder.write("CalcForm_PA/B.txt", good);
    folder.write("CalcForm_Surg/Surgery.txt", bad);
    folder.write("CalcMode/list.txt", "1,A.txt\n");
    folder.write("CalcMode/A.txt", "title:\nT\nPoint:\n");
    folder.write("cvba.dat", "");
    folder.write("other/notes.txt", "A");
    const auto places = [&](const std::string& path) {
        std::vector<std::string> found;
        const CheckResult result = DefinitionCheck::Path((folder.root() + path).c_str());
        for (const CheckFinding& f : result.findings) {
            EXPECT_TRUE(std::string(f.path).starts_with(folder.root())) << f.path;
            found.push_back(std::string(f.path).substr(folder.root().size()) + ":" + std::to_string(f.line) +
                            (f.note ? " note" : ""));
        }
        found.push_back(std::to_string(result.files) + " files");
        return found;
    };
    EXPECT_EQ(places(""),
              (Expected{"CalcForm/list.txt:2", "CalcForm/A.txt:4", "CalcForm/sub\\C.txt:4", "CalcForm/B.txt:0 note",
                        "CalcForm_PA:0", "CalcForm_Surg/Surgery.txt:4", "cvba.dat:0", "8 files"}));
    EXPECT_EQ(places("CalcMode"), (Expected{"2 files"}));
    EXPECT_EQ(places("CalcForm/list.txt"), (Expected{"CalcForm/list.txt:2", "1 files"}));
    EXPECT_EQ(places("CalcMode/A.txt"), (Expected{"1 files"}));
    EXPECT_EQ(places("cvba.dat"), (Expected{"cvba.dat:0", "1 files"}));
    EXPECT_EQ(places("other"), (Expected{"other:0", "0 files"}));
    EXPECT_EQ(places("gone"), (Expected{"gone:0", "0 files"}));
}

TEST(CheckFolder, AVariantHasItsBaseAndAPopulationThatIsAskedFor) {
    const std::string items = "title:\nT\nCalc:\nA=len([S],[N])\n", base = items + "Param:\nPopulation=European\n";
    const auto variant = [&](const std::string& of, const std::string& population) {
        return items + "Param:\nVariant of=" + of + "\nPopulation=" + population + "\n";
    };
    struct {
        std::string variant;
        Expected found;
    } const rows[] = {
        {variant("base.txt", "Japanese adults"), {}},
        {variant("gone.txt", "Thai"), {"6:12 no file \"gone.txt\""}},
        {variant("other.txt", "Thai"), {"6:12 a variant itself"}},
        {variant("base.txt", "european, 20 men"), {"7:12 itself, so this file"}},
        {variant("base.txt", "Korean"), {"7:12 \"other.txt\" is a variant"}},
        {"title:\nT\nCalc:\nA=lenR([S],[N])\nB=len([S],[A])\nParam:\nPopulation=Thai\nVariant of=base.txt\n",
         {"4:1 another formula", "8:12 note lacks \"B\""}},
        {"title:\nT\nCalc:\nB=len([S],[A])\nParam:\nPopulation=Thai\nVariant of=base.txt\n",
         {"7:12 note lacks \"B\"", "7:12 note this file lacks \"A\""}},
    };
    for (const auto& row : rows) {
        const AnalysisFolder folder;
        folder.write("CalcForm/list.txt", "base.txt\r\nother.txt\r\nrow.txt\r\n");
        folder.write("CalcForm/base.txt", base);
        folder.write("CalcForm/other.txt", variant("base.txt", "Korean (\x8a\xd8\x8d\x91\x90\x6c)"));
        folder.write("CalcForm/row.txt", row.variant);
        expect_findings(DefinitionCheck::Path((folder.root() + "CalcForm").c_str()), row.found, row.variant);
    }
}

TEST(CheckFolder, TheOneThatShipsHasNoFault) {
    const CheckResult result = DefinitionCheck::Path(TOOL_SOURCE_DIR "/anaitem");
    EXPECT_GE(result.files, 9);
    for (const CheckFinding& f : result.findings) EXPECT_TRUE(f.note) << f.path << ":" << f.line << ": " << f.message;
}

// Items that the formulas and norms of a file refer to.
struct MissingItems : tool::FormulaNames {
    explicit MissingItems(const tool::DefinitionFile& its_file) : file(its_file) {
        for (const tool::NamedLine& item : file.items())
            tool::visit_names(tool::split_type(item.rest).expression, *this);
    }
    void reference(tool::Ask, std::string_view item) override { missing |= !file.find_item(item); }
    const tool::DefinitionFile& file;
    bool missing = false;
};

TEST(CheckDamage, AFileCutAnywhereIsCheckedAndWhatPassesLacksNoItem) {
    const std::string text =
        "title:\nT\nCalc:\nA=len([S],[N])*2:1\nB=(case(\"A\")-mean(\"A\"))/sdv(\"A\")\nC=switch(case(\"B\")>1);\"\x83\x5C\";\"b\"\n"
        "D=len([S],mid([N],[A]))/(len([S],[N])+case(\"AA\"))\nAA=case(\"A\")\nMean:\nA=len([S],[N]):1,2\nSD:\nA=1\n"
        "Stage:\na=0-5\nb=5-\n";
    int clean = 0;
    for (std::size_t size = 0; size <= text.size(); ++size) {
        const std::string cut = text.substr(0, size);
        for (const CheckFamily family : {CheckFamily::definition_list, CheckFamily::mode, CheckFamily::mode_list,
                                         CheckFamily::eras, CheckFamily::bone_age, CheckFamily::landmark_errors})
            checked(cut, family);
        const CheckResult result = checked(cut);
        for (const CheckFinding& f : result.findings) {
            EXPECT_LE(f.line, std::ranges::count(cut, '\n') + 1);
            EXPECT_FALSE(f.message.IsEmpty());
        }
        if (has_fault(result)) continue;
        ++clean;
        const tool::DefinitionFile file(cut);
        EXPECT_FALSE(MissingItems(file).missing) << cut;
    }
    EXPECT_GT(clean, 20);
    EXPECT_FALSE(has_fault(checked(text)));
}

}  // namespace
}  // namespace tool_test
