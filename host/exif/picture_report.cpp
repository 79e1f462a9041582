#include "host/exif/picture_report.h"

#include <cmath>
#include <nlohmann/json.hpp>

#include "base/columns.h"
#include "base/csv.h"
#include "base/numbers.h"
#include "base/paint.h"
#include "base/utf8.h"
#include "base/wording.h"

namespace cephtool {
namespace {

using Json = nlohmann::ordered_json;

constexpr int label_width = 14, text_width = page_width - label_width - 2;

// Words that no line holds are cut to lines.
std::string with_shorter_words(std::string_view text) {
    std::string parts;
    for (int used = 0; !text.empty();) {
        const std::string_view before = text;
        next_character(text);
        const std::string_view character = before.substr(0, before.size() - text.size());
        used = character == " " ? 0 : used + display_width(character);
        if (used > text_width) {
            parts += " ";
            used = display_width(character);
        }
        parts += character;
    }
    return parts;
}

std::string line(const std::string& label, const std::string& text) {
    const std::string indent(label_width + 2, ' ');
    return "  " + left_aligned(label, label_width) + wrapped(with_shorter_words(text), text_width, indent) + "\n";
}

Json json_of(const PictureFact& fact) {
    if (!fact.is_told()) return nullptr;
    if (!fact.number) return fact.text;
    const bool whole = *fact.number == std::floor(*fact.number) && std::abs(*fact.number) < 1e15;
    return whole ? Json(static_cast<std::int64_t>(*fact.number)) : Json(*fact.number);
}

// A line feed in a field is allowed but trips readers up that go by lines.
std::string csv_of(const PictureFact& fact) {
    if (!fact.is_told()) return {};
    return fact.number ? shortest(*fact.number) : csv_field(printable(fact.text));
}

}  // namespace

std::string picture_table(const Picture& picture, bool colour) {
    std::string text = painted(wrapped(with_shorter_words(picture.file), page_width, ""), bold, colour) + "\n";
    for (const PictureFact& fact : picture.facts)
        if (*fact.label && !fact.shown.empty()) text += line(fact.label, fact.shown);
    if (!picture.has_exif && picture.note.empty()) text += line("EXIF", "none");
    if (!picture.note.empty()) text += line("Note", picture.note);
    return text;
}

std::string picture_json(std::span<const Picture> pictures) {
    Json list = Json::array();
    for (const Picture& picture : pictures) {
        Json json = {{"file", picture.file}, {"exif", picture.has_exif}};
        for (const PictureFact& fact : picture.facts) json[fact.key] = json_of(fact);
        json["note"] = picture.note.empty() ? Json(nullptr) : Json(picture.note);
        list.push_back(json);
    }
    return Json({{"format", "cephtool-exif"}, {"version", 1}, {"pictures", list}}).dump(2) + "\n";
}

std::string picture_csv(std::span<const Picture> pictures) {
    std::string text = "file,exif";
    for (const PictureFact& fact : pictures.front().facts) text += std::string(",") + fact.key;
    text += ",note\r\n";
    for (const Picture& picture : pictures) {
        text += csv_field(picture.file) + (picture.has_exif ? ",1" : ",0");
        for (const PictureFact& fact : picture.facts) text += "," + csv_of(fact);
        text += "," + csv_field(picture.note) + "\r\n";
    }
    return text;
}

}  // namespace cephtool
