// Built into sanitized programs only: fontconfig keeps its caches until the process ends.
extern "C" const char* __lsan_default_suppressions();

extern "C" __attribute__((visibility("default"))) const char* __lsan_default_suppressions() {
    return "leak:libfontconfig\n";
}

// Nor does a program say so among what it prints.
extern "C" const char* __lsan_default_options();

extern "C" __attribute__((visibility("default"))) const char* __lsan_default_options() {
    return "print_suppressions=0";
}
