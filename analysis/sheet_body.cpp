#include "analysis/sheet_body.h"

#include "analysis/formula_unit.h"
#include "analysis/item_text.h"
#include "analysis/program_writer.h"

namespace tool {

SheetBody::SheetBody(int its_kind, std::string text, int its_cast_decimals)
    : kind(its_kind),
      file(std::move(text)),
      lines(file.items()),
      sample(sample_of(file.text())),
      cast_decimals(its_cast_decimals) {
    file.build_index();
}

const Program& SheetBody::program() const {
    std::call_once(program_made_, [this] {
        ProgramWriter writer(kind);
        writer.add(file);
        program_ = writer.finished();
    });
    return program_;
}

const std::vector<SheetItem>& SheetBody::items() const {
    std::call_once(items_made_, [this] {
        std::vector<SheetItem> items;
        for (const NamedLine& line : lines) {
            const TypedExpression typed = split_type(line.rest);
            const NamedLine read = *file.find_item(line.name);
            items.push_back({.name = CString(line.name),
                             .expression = CString(split_type(read.rest).expression),
                             .unit = CString(unit_of_item(file, line.name)),
                             .column = typed.type.column,
                             .mode = typed.type.mode,
                             .second = line.second_set(),
                             .heading = !line.rest.data(),
                             .sign = CString(Sample::of(sample.signs, line.name)),
                             .japanese = CString(Sample::of(sample.japanese, line.name)),
                             .unverified = CString(Sample::of(sample.unverified, line.name))});
        }
        items_ = std::move(items);
    });
    return items_;
}

}  // namespace tool
