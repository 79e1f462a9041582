// What a film's file says beside its pixels. Nothing here is judged yet.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace tool {

// Between the centres of neighbouring pixels, in mm. DICOM gives the distance of rows first.
struct PixelSpacing {
    double down_mm, across_mm;
};

// Pixels an inch, as TIFF, PNG and JPEG note them.
struct Resolution {
    double across_dpi, down_dpi;
};

// The elements of a DICOM header that say how large a pixel is, each as its tag has it.
struct DicomScale {
    std::optional<PixelSpacing> imager_spacing = {};             // (0018,1164), in the plane of the detector
    std::optional<PixelSpacing> pixel_spacing = {};              // (0028,0030)
    std::string calibration_type = {};                           // (0028,0A02): GEOMETRY, FIDUCIAL
    std::string calibration_description = {};                    // (0028,0A04)
    std::optional<double> magnification = {};                    // (0018,1114)
    std::optional<double> detector_distance = {};                // (0018,1110), from the source, in mm
    std::optional<double> patient_distance = {};                 // (0018,1111), likewise
    std::optional<double> aspect_down = {}, aspect_across = {};  // (0028,0034), a ratio
};

// Texts are UTF-8, dates YYYYMMDD as DICOM has them, each empty where the header has none.
struct FilmPatient {
    std::string name;  // "YAMADA TARO", or in its own script where the header has both
    std::string id, sex, birth_date;
    std::string film_date;  // of the acquisition, else the series, else the study
    std::string laterality;
};

struct FilmHeader {
    std::string format = {};       // "JPEG", "PNG", "TIFF", "DICOM"; empty for none of them
    std::string compression = {};  // "uncompressed", "LZW", "JPEG 2000 lossless"
    int frames = 1;                // pictures in the file, of which the film is the first
    std::optional<Resolution> resolution = {};
    DicomScale scale = {};
    FilmPatient patient = {};
    std::string made_by = {};              // manufacturer and model
    std::vector<std::string> doubts = {};  // what a reader had to leave out or take for granted, in sentences
};

}  // namespace tool
