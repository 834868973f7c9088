#pragma once

#import <Foundation/Foundation.h>

#include <string>
#include <vector>

/// Takes the place of an object of the platform: records the messages sent to it, and answers them
/// as configured. Unconfigured object results are nil, numbers 0; every init returns the recorder.
@interface Recorder : NSObject {
    std::string* _name;
    Class _class;
    NSMutableDictionary* _answers;
}

/// Autoreleased. Understands only what the instances of `replaced` do.
+ (Recorder*)named:(const char*)name standingFor:(Class)replaced;

/// The number of recorders with this name.
+ (int)livingNamed:(const char*)name;

/// Numbers are given as NSNumber.
- (void)answer:(id)answer to:(SEL)selector;

@end

namespace morvella::cocoa_tests {

using Lines = std::vector<std::string>;

/// Every message sent to a recorder since the last call, one line each: the recorder's name, the
/// selector and the arguments.
Lines takeRecorded();

/// Adds a line.
void record(const std::string& line);

/// Swizzles a method of `owner` during its lifetime. The owner of a class method is the metaclass.
class Replaced {
  public:
    /// `function` may have any signature: all of them convert by way of `void (*)()`.
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
