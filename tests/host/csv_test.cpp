#include "host/csv.h"

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
    EXPECT_THAT(first_row(",,"), ElementsAre("", "", ""));
    EXPECT_THAT(first_row("a\rb"), ElementsAre("a"));
    EXPECT_THAT(first_row(" \n\t\n"), ElementsAre());
    EXPECT_THROW(first_row("\"open"), Error);
    EXPECT_THROW(first_row("\"a\"b"), Error);
}

TEST(CsvField, ComesBackAsItWas) {
    for (const std::string text : {"plain", "a,b", "\"", "\"\"", "two\r\nlines", "", "漢,字"}) {
        EXPECT_THAT(first_row(csv_field(text) + "," + csv_field(text)), ElementsAre(text, text));
    }
    EXPECT_EQ(csv_field("plain"), "plain");
}

}  // namespace
}  // namespace cephtool
