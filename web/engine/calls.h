// The functions of the module, by what they are about. Everything but bytes and the numbers of a session goes as JSON
// (answer.h); calls.js makes engine.d.ts's face of them.
#pragma once

namespace engine {

void add_folder_calls();
void add_case_calls();
void add_document_calls();
void add_session_calls();

}  // namespace engine
