#pragma once

#import <Foundation/Foundation.h>

#include <functional>
#include <string>
#include <vector>

/// Stands in the place of an object of the platform: writes down what is sent to it, and answers as
/// it was told to. An object that was not told of is answered with nil, a number with 0, and every
/// initializer with the recorder itself.
@interface Recorder : NSObject {
    std::string* _name;
    Class _stoodFor;
    NSMutableDictionary* _answers;
}

/// Autoreleased. What `stoodFor` does not understand, the recorder does not either.
+ (Recorder*)named:(const char*)name standingFor:(Class)stoodFor;

/// How many recorders of that name there are.
+ (int)livingNamed:(const char*)name;

/// Numbers are given as NSNumber.
- (void)answer:(id)answer to:(SEL)selector;

@end

namespace morvella::cocoa_tests {

using Lines = std::vector<std::string>;

/// What was sent to all recorders since this was called last, one line each: the name of the
/// recorder, the selector and the arguments.
Lines takeRecorded();

/// Writes down what was done otherwise.
void record(const std::string& line);

/// What was set before `line`, in the order of the selectors: which property is set before which
/// other one makes no difference. Taken off `lines`.
Lines takeSettingsBefore(const std::string& line, Lines& lines);

/// Puts `implementation` in the place of a method of `owner` as long as this lives. Class methods
/// belong to the class of the class.
class Replaced {
  public:
    Replaced(Class owner, SEL method, IMP implementation, const char* types);
    ~Replaced();
    Replaced(const Replaced&) = delete;
    Replaced& operator=(const Replaced&) = delete;
    IMP before() const { return before_; }

  private:
    Class owner_;
    SEL method_;
    IMP before_;
};

/// Has a class answer a class method without arguments with an object, as long as this lives.
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

/// Has `note` called when the `dealloc` that `owner` has or inherits is reached, as long as this
/// lives. One at a time.
class NotedDealloc {
  public:
    NotedDealloc(Class owner, std::function<void()> note);

  private:
    Replaced replaced_;
};

}  // namespace morvella::cocoa_tests
