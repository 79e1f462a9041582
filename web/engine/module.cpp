// The module that JavaScript loads.
#include <emscripten/bind.h>
#include <framework/system.h>

#include "web/engine/calls.h"

EMSCRIPTEN_BINDINGS(engine) {
    SetModuleFileNameA("/bin/engine");  // beside which what ships lies: CMakeLists.txt
    engine::add_folder_calls();
    engine::add_case_calls();
    engine::add_document_calls();
    engine::add_session_calls();
}
