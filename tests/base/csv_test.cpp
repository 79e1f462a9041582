#include "base/csv.h"

#include <gmock/gmock.h>

namespace cephtool {
namespace {

using testing::ElementsAre;

std::vector<std::string> first_row(const std::string& text) {
    const Source source{"test.csv", text};
    CsvReader reader(source);
    CsvRow row;
    std::vector<std::string> fields;
    if (!reader.next(row)) return fields;
    if (row.comment) fields.push_back("comment");
    for (const CsvField& field : row.fields) fields.push_back(field.text);
    return fields;
}

TEST(CsvReader, TakesRowsApart) {
    EXPECT_THAT(first_row("a, b ,c"), ElementsAre("a", "b", "c"));
    EXPECT_THAT(first_row("\r\n\n a,\r\nb"), ElementsAre("a", ""));
    EXPECT_THAT(first_row("\"a,b\" ,\"say \"\"S\"\"\",\"two\nlines\""), ElementsAre("a,b", "say \"S\"", "two\nlines"));
    EXPECT_THAT(first_row("# x=1,2\nS,1,2"), ElementsAre("comment", "# x=1,2"));
    EXPECT_THAT(first_row("\"# a=1,2\"\nS"), ElementsAre("comment", "# a=1,2"));
    EXPECT_THAT(first_row(",,"), ElementsAre("", "", ""));
    EXPECT_THAT(first_row("a\rb"), ElementsAre("a"));
    EXPECT_THAT(first_row(" \n\t\n"), ElementsAre());
    EXPECT_THROW(first_row("\"open"), Error);
    EXPECT_THROW(first_row("\"a\"b"), Error);
    EXPECT_EQ(first_row(std::string(most_csv_fields - 1, ',')).size(), most_csv_fields);
    EXPECT_THROW(first_row(std::string(most_csv_fields, ',')), Error);
}

TEST(CsvField, ComesBackAsItWas) {
    for (const std::string text : {"plain", "a,b", "\"", "\"\"", "two\r\nlines", "", "漢,字", " a ", "-1.5", "=1+1",
                                   "'", "'=1", "''-x", "\t@a", "\r+", "＝1,2", "'quoted'", "+49 30", "-"}) {
        EXPECT_THAT(first_row(csv_field(text) + "," + csv_field(text)), ElementsAre(text, text));
    }
    const std::pair<const char*, const char*> fields[] = {
        {"plain", "plain"}, {"-1.5e3", "-1.5e3"}, {"=SUM(A1)", "'=SUM(A1)"}, {"-1+2", "'-1+2"}, {"@a", "'@a"},
        {"\t=1", "'\t=1"},  {"'a", "'a"},         {"－あ", "'－あ"}};
    for (const auto& [text, field] : fields) EXPECT_EQ(csv_field(text), field);
}

}  // namespace
}  // namespace cephtool
