// Read by the sanitizers, if the build has them.

// NOLINTBEGIN(bugprone-reserved-identifier): the sanitizers look for these names.
extern "C" {

/// Whole stacks, so that below the platform's frames our own are seen.
const char* __asan_default_options() {
    return "fast_unwind_on_malloc=0";
}

/// What the Objective-C runtime and GNUstep keep until the process ends: tables of classes and
/// methods, and what setting up takes.
const char* __lsan_default_suppressions() {
    return "leak:__objc_exec_class\n"
           "leak:class_addMethod\n"
           "leak:class_copyMethodList\n"
           "leak:prepareFoundation\n";
}

}  // extern "C"
// NOLINTEND(bugprone-reserved-identifier)
