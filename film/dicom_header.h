// What a DICOM header says beside the pixels.
#pragma once

#include "film/dicom_data_set.h"
#include "film/film.h"

namespace tool {

void read_grey_rule(const DicomDataSet& data, Film& film);
void read_header(const DicomDataSet& data, FilmHeader& header);

}  // namespace tool
