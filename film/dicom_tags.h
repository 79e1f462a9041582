// The elements of DICOM that are read, named as the standard names them.
#pragma once

#include "film/dicom_data_set.h"

namespace tool::dicom_tag {

inline constexpr DicomTag transfer_syntax_uid = 0x00020010, specific_character_set = 0x00080005,
                          study_date = 0x00080020, series_date = 0x00080021, acquisition_date = 0x00080022,
                          manufacturer = 0x00080070, model_name = 0x00081090, patient_name = 0x00100010,
                          patient_id = 0x00100020, patient_birth_date = 0x00100030, patient_sex = 0x00100040,
                          source_to_detector = 0x00181110, source_to_patient = 0x00181111, magnification = 0x00181114,
                          imager_pixel_spacing = 0x00181164, laterality = 0x00200060, image_laterality = 0x00200062,
                          samples_per_pixel = 0x00280002, photometric_interpretation = 0x00280004,
                          planar_configuration = 0x00280006, number_of_frames = 0x00280008, rows = 0x00280010,
                          columns = 0x00280011, pixel_spacing = 0x00280030, pixel_aspect_ratio = 0x00280034,
                          bits_allocated = 0x00280100, bits_stored = 0x00280101, high_bit = 0x00280102,
                          pixel_representation = 0x00280103, burned_in_annotation = 0x00280301,
                          calibration_type = 0x00280A02, calibration_description = 0x00280A04,
                          window_center = 0x00281050, window_width = 0x00281051, rescale_intercept = 0x00281052,
                          rescale_slope = 0x00281053, window_function = 0x00281056, modality_lut = 0x00283000,
                          lut_descriptor = 0x00283002, lut_data = 0x00283006, voi_lut = 0x00283010,
                          pixel_data = 0x7FE00010;

inline bool is_read(DicomTag tag) {
    constexpr DicomTag all[] = {transfer_syntax_uid,
                                specific_character_set,
                                study_date,
                                series_date,
                                acquisition_date,
                                manufacturer,
                                model_name,
                                patient_name,
                                patient_id,
                                patient_birth_date,
                                patient_sex,
                                source_to_detector,
                                source_to_patient,
                                magnification,
                                imager_pixel_spacing,
                                laterality,
                                image_laterality,
                                samples_per_pixel,
                                photometric_interpretation,
                                planar_configuration,
                                number_of_frames,
                                rows,
                                columns,
                                pixel_spacing,
                                pixel_aspect_ratio,
                                bits_allocated,
                                bits_stored,
                                high_bit,
                                pixel_representation,
                                burned_in_annotation,
                                calibration_type,
                                calibration_description,
                                window_center,
                                window_width,
                                rescale_intercept,
                                rescale_slope,
                                window_function,
                                modality_lut,
                                lut_descriptor,
                                lut_data,
                                voi_lut,
                                pixel_data};
    for (const DicomTag one : all)
        if (one == tag) return true;
    return false;
}

}  // namespace tool::dicom_tag
