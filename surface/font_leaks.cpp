// Built into sanitized programs only: fontconfig keeps its caches until the process ends.
extern "C" const char* __lsan_default_suppressions();

extern "C" __attribute__((visibility("default"))) const char* __lsan_default_suppressions() {
    return "leak:libfontconfig\n";
}
