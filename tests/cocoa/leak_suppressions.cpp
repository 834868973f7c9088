// Read by the sanitizers, if the build has them.

extern "C" {

/// Whole stacks, so that below the platform's frames our own are seen.
const char* __asan_default_options() {
    return "fast_unwind_on_malloc=0";
}

/// What the Objective-C runtime and GNUstep keep until the process ends: tables of classes and
/// methods, and what setting up takes. GNUstep's user defaults lose a text each time they are made.
const char* __lsan_default_suppressions() {
    return "leak:__objc_exec_class\n"
           "leak:class_addMethod\n"
           "leak:class_copyMethodList\n"
           "leak:prepareFoundation\n"
           "leak:_i_DomainDefaults__initWithDomain_\n";
}

}  // extern "C"
