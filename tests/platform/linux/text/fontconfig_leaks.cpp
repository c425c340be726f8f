// Fontconfig loses sight of some of what it keeps until the process ends; LeakSanitizer asks this function.
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libfontconfig";
}
