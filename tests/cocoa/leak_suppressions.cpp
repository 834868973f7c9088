// Called by the sanitizers in builds that have them.

// NOLINTBEGIN(bugprone-reserved-identifier): the sanitizers look for these names.
extern "C" {

/// Unwinds whole stacks, so that reports also show our frames below the platform's.
const char* __asan_default_options() {
    return "fast_unwind_on_malloc=0";
}

/// The Objective-C runtime and GNUstep keep these until the process ends: tables of classes and
/// methods, and the allocations of their set-up. GIO leaks two strings if it may not move an item
/// to the Trash.
const char* __lsan_default_suppressions() {
    return "leak:__objc_exec_class\n"
           "leak:class_addMethod\n"
           "leak:class_copyMethodList\n"
           "leak:prepareFoundation\n"
           "leak:g_uri_escape_string\n"
           "leak:g_strdup_printf\n";
}

}  // extern "C"
// NOLINTEND(bugprone-reserved-identifier)
