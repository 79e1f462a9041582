#include "film/dicom_header.h"

#include "film/dicom_pixels.h"
#include "film/dicom_tags.h"

namespace tool {
namespace {

// A table of the first item of a sequence; without entries where there is none or it is not what it should be.
GreyTable table_of(const DicomDataSet& data, DicomTag sequence, bool signed_values) {
    GreyTable table;
    const auto found = data.first_item(sequence, dicom_tag::is_read);
    const DicomElement* const descriptor = found ? found->find(dicom_tag::lut_descriptor) : nullptr;
    const DicomElement* const entries = found ? found->find(dicom_tag::lut_data) : nullptr;
    if (!descriptor || !entries || descriptor->value.size() < 6) return table;
    const auto number = [&](std::size_t i) { return descriptor->coding.u16(descriptor->value.data() + 2 * i); };
    const std::size_t count = number(0) == 0 ? 65536 : number(0);  // 16 bits can't hold 65536
    table.first = signed_values ? static_cast<std::int16_t>(number(1)) : number(1);
    table.bits = number(2);
    if (table.bits < 1 || table.bits > 16) return {};
    if (entries->value.size() >= 2 * count) {
        for (std::size_t i = 0; i < count; ++i)
            table.entries.push_back(entries->coding.u16(entries->value.data() + 2 * i));
    } else if (entries->value.size() >= count) {  // a byte an entry
        for (const char byte : entries->value.substr(0, count))
            table.entries.push_back(static_cast<unsigned char>(byte));
    }
    return table;
}

std::optional<PixelSpacing> spacing(const DicomDataSet& data, DicomTag tag) {
    const std::vector<double> numbers = data.decimals(tag);
    if (numbers.size() != 2) return {};
    return PixelSpacing{numbers[0], numbers[1]};
}

// Of "alphabetic=ideographic=phonetic" the one in the person's own script; "FAMILY^GIVEN" becomes two words.
std::string person_name(const std::string& text) {
    const std::size_t first = text.find('='), second = text.find('=', first == std::string::npos ? first : first + 1);
    std::string name = first == std::string::npos ? text : text.substr(first + 1, second - first - 1);
    if (name.find_first_not_of("^ ") == std::string::npos) name = text.substr(0, first);
    std::string words;
    for (std::size_t at = 0; at < name.size(); ++at) {
        const bool gap = name[at] == '^' || name[at] == ' ';
        if (!gap) {
            words += name[at];
        } else if (!words.empty() && words.back() != ' ') {
            words += ' ';
        }
    }
    if (words.ends_with(' ')) words.pop_back();
    return words;
}

}  // namespace

void read_grey_rule(const DicomDataSet& data, Film& film) {
    using namespace dicom_tag;
    GreyRule& rule = film.rule;
    rule.white_is_low = data.text(photometric_interpretation) == "MONOCHROME1";
    rule.slope = data.decimal(rescale_slope).value_or(1);
    rule.intercept = data.decimal(rescale_intercept).value_or(0);
    if (!(rule.slope != 0)) rule.slope = 1;
    rule.modality = table_of(data, modality_lut, rule.lowest < 0);
    rule.voi = table_of(data, voi_lut, rule.lowest < 0 || rule.intercept < 0);
    const std::vector<double> centres = data.decimals(window_center), widths = data.decimals(window_width);
    const std::string function = data.text(window_function);
    using enum GreyWindow::Shape;
    const GreyWindow::Shape shape = function == "SIGMOID"        ? sigmoid
                                    : function == "LINEAR_EXACT" ? linear_exact
                                                                 : linear;
    for (std::size_t i = 0; i < std::min(centres.size(), widths.size()); ++i)
        if (widths[i] >= (shape == linear ? 1 : 1e-9)) rule.windows.push_back({centres[i], widths[i], shape});
}

void read_header(const DicomDataSet& data, FilmHeader& header) {
    using namespace dicom_tag;
    DicomScale& scale = header.scale;
    scale.imager_spacing = spacing(data, imager_pixel_spacing);
    scale.pixel_spacing = spacing(data, pixel_spacing);
    constexpr std::size_t longest_code = 16;
    scale.calibration_type = data.text(calibration_type).substr(0, longest_code);
    scale.magnification = data.decimal(magnification);
    scale.detector_distance = data.decimal(source_to_detector);
    scale.patient_distance = data.decimal(source_to_patient);
    if (const std::vector<double> ratio = data.decimals(pixel_aspect_ratio); ratio.size() == 2)
        scale.aspect_down = ratio[0], scale.aspect_across = ratio[1];

    const std::string sets = data.text(specific_character_set);
    const auto words = [&](DicomTag tag) { return utf8_of_dicom(data.text(tag), sets); };
    scale.calibration_description = words(calibration_description);
    FilmPatient& patient = header.patient;
    patient.name = person_name(words(patient_name));
    patient.id = words(patient_id);
    patient.sex = data.text(patient_sex);
    patient.birth_date = data.text(patient_birth_date);
    for (const DicomTag tag : {acquisition_date, series_date, study_date})
        if (patient.film_date.empty()) patient.film_date = data.text(tag);
    for (const DicomTag tag : {image_laterality, laterality})
        if (patient.laterality.empty()) patient.laterality = data.text(tag);
    if (data.text(burned_in_annotation) == "YES")
        header.doubts.emplace_back("The film's pixels show text, which may name the patient (0028,0301).");
    header.made_by = words(manufacturer);
    const std::string model = words(model_name);
    if (!model.empty()) header.made_by += (header.made_by.empty() ? "" : " ") + model;
}

}  // namespace tool
