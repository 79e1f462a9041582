// Built into programs for the thread sanitizer only: Pango, fontconfig and what they stand on are not built for it, so
// that it sees what their threads do but not all that keeps them apart.
extern "C" const char* __tsan_default_suppressions();

extern "C" __attribute__((visibility("default"))) const char* __tsan_default_suppressions() {
    return "called_from_lib:libfontconfig.so\n"
           "called_from_lib:libfreetype.so\n"
           "called_from_lib:libharfbuzz.so\n"
           "called_from_lib:libglib-2.0.so\n"
           "called_from_lib:libgobject-2.0.so\n"
           "called_from_lib:libcairo.so\n"
           "called_from_lib:libpango-1.0.so\n"
           "called_from_lib:libpangoft2-1.0.so\n"
           "called_from_lib:libpangocairo-1.0.so\n";
}
