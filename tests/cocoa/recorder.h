#pragma once

#import <Foundation/Foundation.h>

#include <string>
#include <vector>

/// Replaces a platform object: records the messages sent to it and answers them as configured.
/// Unconfigured object results are nil, numbers 0; every init returns the recorder.
@interface Recorder : NSObject {
    std::string* _name;
    Class _class;
    NSMutableDictionary* _answers;
}

/// Autoreleased. Understands only the messages that instances of `replaced` understand.
+ (Recorder*)named:(const char*)name replacing:(Class)replaced;

/// The number of recorders with this name that have not been deallocated.
+ (int)livingNamed:(const char*)name;

/// Pass a number as an NSNumber.
- (void)answer:(id)answer to:(SEL)selector;

@end

namespace morvella::cocoa_tests {

using Lines = std::vector<std::string>;

/// Every message sent to a recorder since the last call, one line each: the recorder's name, the
/// selector and the arguments.
Lines takeRecorded();

/// Adds a line of the test's own.
void record(const std::string& line);

/// Swizzles a method of `owner` during its lifetime. The owner of a class method is the metaclass.
class Replaced {
  public:
    /// `function` may have any signature: it is cast by way of `void (*)()`.
    template <class Result, class... Arguments>
    Replaced(Class owner, SEL method, Result (*function)(Arguments...))
        : Replaced(owner, method, reinterpret_cast<IMP>(reinterpret_cast<void (*)()>(function))) {}
    Replaced(Class owner, SEL method, IMP implementation);
    ~Replaced();
    Replaced(const Replaced&) = delete;
    Replaced& operator=(const Replaced&) = delete;

  private:
    Class owner_;
    SEL method_;
    IMP before_;
};

/// Makes a class method without arguments return `answer` during its lifetime.
class Answering {
  public:
    Answering(Class receiver, SEL method, id answer);
    ~Answering();
    Answering(const Answering&) = delete;
    Answering& operator=(const Answering&) = delete;

  private:
    Class receiver_;
    SEL method_;
    Replaced replaced_;
};

}  // namespace morvella::cocoa_tests
