# Fails when LIBRARY offers a host what belongs to namespace `tool` and to no header in include/, or instances of the
# standard library's templates.
execute_process(COMMAND ${NM} -DC --defined-only ${LIBRARY} OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
if(NOT symbols MATCHES "CCalcTool::Angle_Cal" OR NOT symbols MATCHES "tool::AnalysisFolder::analyses")
    message(FATAL_ERROR "${LIBRARY} does not offer CCalcTool::Angle_Cal or tool::AnalysisFolder::analyses")
endif()
string(REGEX MATCHALL "[0-9a-f]+ [A-Za-z] (vtable for |typeinfo for |typeinfo name for )?(tool|std)::[^\n]*" inner "${symbols}")
set(types "(Analysis|AnalysisFolder|ArrayMeasurer|DisplayMode|EraCalendar|LandmarkErrors|SubjectRecord|ValueError)::")
set(functions "(bone_age|compose|dental_stage_named|error_axes|film_axes|measure_all|norm_band|number_texts|population_named|segments_of)(\\[abi:cxx11])?[(]")
list(FILTER inner EXCLUDE REGEX "[0-9a-f]+ T tool::(${types}|${functions})")
if(inner)
    list(JOIN inner "\n" inner)
    message(FATAL_ERROR "inner symbols that should be hidden:\n${inner}")
endif()
