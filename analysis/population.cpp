#include "analysis/population.h"

#include "platform/text.h"

namespace tool {
namespace {

struct Known {
    std::string_view name, japanese;
};
// A name that begins like another one stands in front of it.
constexpr Known stock[] = {
    {"African Brazilian", "アフリカ系ブラジル人"},
    {"African", "アフリカ人"},
    {"Arab", "アラブ人"},
    {"Bangladeshi", "バングラデシュ人"},
    {"Black American", "黒人アメリカ人"},
    {"Brazilian", "ブラジル人"},
    {"Chinese", "中国人"},
    {"Egyptian", "エジプト人"},
    {"European", "ヨーロッパ人"},
    {"Filipino", "フィリピン人"},
    {"German", "ドイツ人"},
    {"Indian", "インド人"},
    {"Indonesian", "インドネシア人"},
    {"Iranian", "イラン人"},
    {"Japanese", "日本人"},
    {"Korean", "韓国人"},
    {"Malay", "マレー人"},
    {"Mexican", "メキシコ人"},
    {"Nepalese", "ネパール人"},
    {"Nigerian", "ナイジェリア人"},
    {"North American", "北米人"},
    {"Pakistani", "パキスタン人"},
    {"Saudi", "サウジアラビア人"},
    {"Scandinavian", "北欧人"},
    {"Spanish", "スペイン人"},
    {"Syrian", "シリア人"},
    {"Taiwanese", "台湾人"},
    {"Thai", "タイ人"},
    {"Turkish", "トルコ人"},
    {"Vietnamese", "ベトナム人"},
};

// Whether the words are the name, or go on behind it with another word.
bool begins_with_name(std::string_view words, std::string_view name) {
    return words.size() >= name.size() && equal_ignoring_case(words.substr(0, name.size()), name) &&
           (words.size() == name.size() || std::string_view(" ,(").find(words[name.size()]) != std::string_view::npos);
}

// The Japanese in brackets at the end, if there is any.
std::string_view in_brackets(std::string_view text) {
    const std::size_t open = text.rfind('(');
    return open == std::string_view::npos || !text.ends_with(')') ? std::string_view()
                                                                  : text.substr(open + 1, text.size() - open - 2);
}

}  // namespace

PopulationName population_name(std::string_view text) {
    text = trimmed(text);
    for (const Known& known : stock)
        if (begins_with_name(text, known.name) || text.starts_with(known.japanese))
            return {std::string(known.name), std::string(known.japanese)};
    const std::string_view name = trimmed(text.substr(0, text.find_first_of(",(")));
    const std::string_view japanese = in_brackets(text);
    return {std::string(name), std::string(japanese.empty() ? name : japanese)};
}

}  // namespace tool
