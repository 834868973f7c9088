#include "cocoa/door_fixture.h"

#include <Block.h>
#import <QuartzCore/QuartzCore.h>
#import <objc/runtime.h>

#import "platform/cocoa/PressMonitor.h"

#include "app/steps.hpp"

#include <utility>
#include <vector>

namespace morvella::cocoa_tests {

NSViewController* reentered = nil;
bool pageChangeRaises = false;
void (^answer)(NSModalResponse) = nil;

void forgetSheet() {
    if (answer) {
        Block_release(answer);
        answer = nil;
    }
}

}  // namespace morvella::cocoa_tests

using namespace morvella::cocoa_tests;

@implementation TestDoor

- (NSString*)description {
    return @"door";
}

- (void)performSelector:(SEL)selector withObject:(id)object afterDelay:(NSTimeInterval)delay {
    record(std::string("after ") + std::to_string(int(delay)) + " s: " + sel_getName(selector));
}

@end

/// The superview of the page.
@interface TestContainer : NSView
@end

@implementation TestContainer

- (void)replaceSubview:(NSView*)shown with:(NSView*)page {
    if (pageChangeRaises) {
        [NSException raise:@"StubException" format:@"raised on purpose"];
    }
    [super replaceSubview:shown with:page];
    [reentered viewDidAppear];
}

@end

@implementation TestSheet

- (void)beginSheetModalForWindow:(NSWindow*)window
               completionHandler:(void (^)(NSModalResponse))handler {
    record(*_name + " begins on " + [[window description] UTF8String]);
    forgetSheet();
    answer = Block_copy(handler);
    [reentered viewDidAppear];
}

@end

/// A bundle without resources. Controllers search it while they load.
@interface TestBundle : Recorder
@end

@implementation TestBundle

- (NSURL*)URLForResource:(NSString*)name withExtension:(NSString*)extension {
    record("searches " + std::string([name UTF8String]));
    [reentered viewDidLoad];
    return nil;
}

@end

@interface TestSidebar : NSObject
@end

@implementation TestSidebar

- (void)setSteps:(const std::vector<morvella::Step>&)steps {
    record("sidebar shows steps");
    if (pageChangeRaises) {
        [NSException raise:@"StubException" format:@"raised on purpose"];
    }
}

@end

namespace morvella::cocoa_tests {

namespace {

id windowOfPage = nil;

void recordCall(id, SEL method) {
    record(sel_getName(method));
}

id windowOfView(NSView* view, SEL) {
    return [view superview] ? windowOfPage : nil;
}

}  // namespace

DoorLifeCycleTest::DoorLifeCycleTest()
    : sheet([TestSheet named:"sheet" replacing:[NSAlert class]]),
      mainBundle_([NSBundle class], @selector(mainBundle),
                  [TestBundle named:"bundle" replacing:[NSBundle class]]),
      sheet_([NSAlert class], @selector(alloc), sheet),
      container_([[[TestContainer alloc] init] autorelease]) {
    NSApp = static_cast<id>([Recorder named:"application" replacing:[NSApplication class]]);
    windowOfPage = window;
    replaced_.emplace_back([NSView class], @selector(window), windowOfView);
    for (const auto& [owner, method] : std::initializer_list<std::pair<Class, SEL>>{
             {[NSViewController class], @selector(awakeFromNib)},
             {[NSViewController class], @selector(viewDidLoad)},
             {object_getClass([NSWindow class]), @selector(setAllowsAutomaticWindowTabbing:)},
             {object_getClass([CATransaction class]), @selector(flush)},
             {object_getClass([PressMonitor class]), @selector(start)},
             {object_getClass([PressMonitor class]), @selector(screenChanged)}}) {
        replaced_.emplace_back(owner, method, recordCall);
    }
    [container_ addSubview:initial];
    door = makeDoor();
}

DoorLifeCycleTest::~DoorLifeCycleTest() {
    NSApp = nil;
    windowOfPage = nil;
    reentered = nil;
    pageChangeRaises = false;
    forgetSheet();
}

TestDoor* DoorLifeCycleTest::makeDoor() {
    TestDoor* made = [[[TestDoor alloc] initWithNibName:nil bundle:nil] autorelease];
    [made setInitialView:initial];
    [made setSettingsView:settings];
    [made setDoInstallView:installation];
    [made setValue:[[[TestSidebar alloc] init] autorelease] forKey:@"stepsSidebar"];
    [made setView:initial];
    takeRecorded();
    return made;
}

void DoorLifeCycleTest::start() {
    [door awakeFromNib];
    [door windowIsOnScreen];
    takeRecorded();
}

Lines DoorLifeCycleTest::steps() {
    Lines lines = takeRecorded();
    std::erase_if(lines, [](const std::string& line) {
        return line.ends_with("attachedSheet") || line.ends_with("isActive") ||
               line.ends_with("contentView") || line.starts_with("searches") ||
               line.starts_with("announcement") || line.starts_with("panel ") ||
               line.starts_with("sheet init") || line.starts_with("sheet set") ||
               line.starts_with("sheet window") || line.starts_with("sheet addButton");
    });
    return lines;
}

}  // namespace morvella::cocoa_tests
