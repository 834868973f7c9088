#include "cocoa/recorder.h"

#import <objc/runtime.h>

#include <map>
#include <utility>

namespace morvella::cocoa_tests {

namespace {

Lines recorded;
std::map<std::string, int> livingRecorders;
std::map<std::pair<Class, std::string>, id> answers;

std::string utf8(NSString* text) {
    return [text UTF8String];
}

std::string describe(id object) {
    if (!object) {
        return "nil";
    }
    if ([object isKindOfClass:[NSURL class]]) {
        return utf8([object absoluteString]);
    }
    if ([object isKindOfClass:[NSArray class]]) {
        return utf8([object componentsJoinedByString:@" "]);
    }
    return utf8([object description]);
}

template <class T>
T argument(NSInvocation* invocation, NSInteger index) {
    T value{};
    [invocation getArgument:&value atIndex:index];
    return value;
}

std::string describeArgument(NSInvocation* invocation, NSInteger index) {
    const char* type = [[invocation methodSignature] getArgumentTypeAtIndex:NSUInteger(index)];
    type += std::string(type).find_first_not_of("rnNoORV");
    switch (*type) {
        case '@':
            return describe(argument<id>(invocation, index));
        case 'c':
        case 'C':
        case 'B':
            return argument<signed char>(invocation, index) ? "YES" : "NO";
        case 'd':
            return std::to_string(argument<double>(invocation, index));
        case '{':
            return "structure";
        case '^':
            return argument<void*>(invocation, index) ? "pointer" : "NULL";
        default:
            return std::to_string(argument<long long>(invocation, index));
    }
}

/// Implements every class method with a configured answer.
id answerOf(id receiver, SEL method) {
    id answer = answers.at({receiver, sel_getName(method)});
    return sel_isEqual(method, @selector(alloc)) ? [answer retain] : answer;
}

}  // namespace

Lines takeRecorded() {
    return std::exchange(recorded, {});
}

void record(const std::string& line) {
    recorded.push_back(line);
}

Replaced::Replaced(Class owner, SEL method, IMP implementation)
    : owner_(owner), method_(method), before_(class_getMethodImplementation(owner, method)) {
    // GNUstep's runtime would replace an inherited method in all classes, and would never call a
    // method added beside the class's own.
    const Method own = class_getInstanceMethod(owner_, method_);
    if (own && own != class_getInstanceMethod(class_getSuperclass(owner_), method_)) {
        method_setImplementation(own, implementation);
    } else {
        class_addMethod(owner_, method_, implementation, own ? method_getTypeEncoding(own) : "@@:");
    }
}

Replaced::~Replaced() {
    if (const Method replaced = class_getInstanceMethod(owner_, method_)) {
        method_setImplementation(replaced, before_);
    }
}

Answering::Answering(Class receiver, SEL method, id answer)
    : receiver_(receiver), method_(method), replaced_(object_getClass(receiver), method, answerOf) {
    answers[{receiver, sel_getName(method)}] = [answer retain];
}

Answering::~Answering() {
    const auto answer = answers.find({receiver_, sel_getName(method_)});
    [answer->second release];
    answers.erase(answer);
}

}  // namespace morvella::cocoa_tests

using namespace morvella::cocoa_tests;

@implementation Recorder

+ (Recorder*)named:(const char*)name replacing:(Class)replaced {
    return [[[self alloc] initWithName:name replacing:replaced] autorelease];
}

+ (int)livingNamed:(const char*)name {
    return livingRecorders[name];
}

- (instancetype)initWithName:(const char*)name replacing:(Class)replaced {
    self = [super init];
    _name = new std::string(name);
    _class = replaced;
    _answers = [[NSMutableDictionary alloc] init];
    ++livingRecorders[*_name];
    return self;
}

- (void)dealloc {
    --livingRecorders[*_name];
    delete _name;
    [_answers release];
    [super dealloc];
}

- (void)answer:(id)answer to:(SEL)selector {
    [_answers setObject:answer forKey:NSStringFromSelector(selector)];
}

- (NSString*)description {
    return [NSString stringWithUTF8String:_name->c_str()];
}

#pragma mark Methods of every object

- (BOOL)isKindOfClass:(Class)kind {
    return [_class isSubclassOfClass:kind] || [super isKindOfClass:kind];
}

- (instancetype)init {
    record(*_name + " init");
    return self;
}

- (id)valueForKey:(NSString*)key {
    record(*_name + " valueForKey: " + [key UTF8String]);
    return [_answers objectForKey:@"valueForKey:"];
}

- (void)setValue:(id)value forKey:(NSString*)key {
    record(*_name + " setValue:forKey: " + describe(value) + " " + [key UTF8String]);
}

#pragma mark Methods of the replaced object

- (NSMethodSignature*)methodSignatureForSelector:(SEL)selector {
    NSMethodSignature* own = [super methodSignatureForSelector:selector];
    return own ? own : [_class instanceMethodSignatureForSelector:selector];
}

- (void)forwardInvocation:(NSInvocation*)invocation {
    NSString* selector = NSStringFromSelector([invocation selector]);
    NSMethodSignature* signature = [invocation methodSignature];
    std::string line = *_name + " " + [selector UTF8String];
    for (NSUInteger index = 2; index < [signature numberOfArguments]; ++index) {
        line += " " + describeArgument(invocation, NSInteger(index));
    }
    record(line);
    id answer = [_answers objectForKey:selector];
    if (!answer && [selector hasPrefix:@"init"]) {
        answer = self;
    }
    if (*[signature methodReturnType] == '@') {
        [invocation setReturnValue:&answer];
    } else if (const NSUInteger length = [signature methodReturnLength];
               length > 0 && length <= sizeof(long long)) {
        long long number = [answer longLongValue];
        [invocation setReturnValue:&number];
    }
}

@end
