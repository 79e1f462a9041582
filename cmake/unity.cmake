# With CMAKE_UNITY_BUILD the rooms are compiled in batches of files, from nothing in a third of the time: what is built
# once (programs to ship, for Windows, for the page) is built so, what is worked on is not. Files below have names in
# their unnamed namespaces that another of the room has too, or libraries whose headers go ill together: they stay alone.
function(compiled_alone target)
    if(TARGET ${target})
        list(TRANSFORM ARGN PREPEND ${PROJECT_SOURCE_DIR}/)
        set_source_files_properties(${ARGN} TARGET_DIRECTORY ${target} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
    endif()
endfunction()

file(GLOB of_windows CONFIGURE_DEPENDS RELATIVE ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/platform/win32/*.cpp)
compiled_alone(tool_rooms
    analysis/analysis.cpp analysis/analysis_sheet.cpp analysis/bone_age.cpp analysis/cast_measures.cpp
    analysis/check/definition_check.cpp analysis/check/display_mode.cpp analysis/check/findings.cpp
    analysis/check/key.cpp analysis/check/landmark_errors.cpp
    analysis/compose.cpp analysis/composed_stages.cpp analysis/definition_file.cpp analysis/display_mode.cpp
    analysis/formula.cpp analysis/growth_stage.cpp analysis/key_line.cpp analysis/landmark_names.cpp
    platform/format.cpp platform/framework/files.cpp
    platform/posix/double_byte_table.cpp platform/posix/names.cpp platform/posix/new_file.cpp
    platform/posix/whole_files.cpp platform/settings_file.cpp render/construction_line.cpp render/pen.cpp
    render/tools_drawing.cpp util/era_table.cpp util/line_image_source.cpp util/line_image_thinning.cpp
    util/stored_date.cpp ${of_windows})
compiled_alone(tool_surface  # whose copies of the library's files give way to the library's
    platform/new_file.cpp platform/posix/new_file.cpp platform/win32/new_file.cpp surface/drawn_surface.cpp
    surface/text_run.cpp)
compiled_alone(tool_film
    film/dicom_dcmtk.cpp film/dicom_jpeg2000.cpp film/dicom_text.cpp film/jpeg.cpp film/png.cpp film/tiff.cpp)
compiled_alone(tool_cases
    cases/case_csv.cpp cases/case_fcsv.cpp cases/case_json.cpp cases/case_record.cpp cases/case_tps.cpp)
compiled_alone(tool_results
    results/growth.cpp results/growth_report.cpp results/results_json.cpp results/results_table.cpp results/texts.cpp)
compiled_alone(tool_study
    study/reliability_output.cpp)
compiled_alone(tool_tracing
    tracing/canvas.cpp tracing/cast_outlines.cpp tracing/measures.cpp tracing/outline_fit.cpp
    tracing/outline_template.cpp tracing/thin_plate_spline.cpp tracing/tracing.cpp)
compiled_alone(tool_report
    report/landmark_scatter.cpp report/pages.cpp report/patient_section.cpp report/result_table.cpp)
compiled_alone(cephtool_readers
    host/batch/case_stream.cpp)
compiled_alone(cephtool_parts
    host/batch/batch_output.cpp host/batch/run_lock.cpp host/command_line.cpp host/commands/age.cpp
    host/commands/analyses.cpp host/commands/analyze.cpp host/commands/check.cpp host/commands/era.cpp
    host/commands/exif.cpp host/commands/film.cpp host/commands/modes.cpp host/commands/reliability.cpp
    host/commands/report_options.cpp host/commands/stage.cpp host/exif/picture_files.cpp host/exif/picture_report.cpp
    host/film_report.cpp host/line_picture.cpp)
if(TARGET python_engine)  # each of its few files binds things with names alike
    set_target_properties(python_engine PROPERTIES UNITY_BUILD OFF)
endif()
