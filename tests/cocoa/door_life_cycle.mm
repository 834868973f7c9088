#include "cocoa/door_life_cycle.h"

#import <QuartzCore/QuartzCore.h>
#import <objc/runtime.h>

#include <algorithm>

#import "platform/cocoa/PressMonitor.h"
#import "platform/cocoa/StepsSidebar.h"

@implementation PlaceRecorder

- (void)replaceSubview:(NSView*)shown with:(NSView*)page {
    morvella::cocoa_tests::record(std::string("place shows ") + [[page description] UTF8String]);
    [door viewDidAppear];
}

@end

/// Whom a sheet tells, when it begins, that the page has appeared.
static NSViewController* appearing = nil;

/// Begins and is never answered.
@interface StandingSheet : Recorder
@end

@implementation StandingSheet

- (void)beginSheetModalForWindow:(NSWindow*)window
               completionHandler:(void (^)(NSModalResponse))handler {
    morvella::cocoa_tests::record("sheet begins");
    [appearing viewDidAppear];
}

@end

/// Tells which step is the current one.
@interface SidebarRecorder : Recorder
@end

@implementation SidebarRecorder

- (void)setSteps:(const std::vector<morvella::Step>&)steps {
    for (const morvella::Step& step : steps) {
        if (step.state == morvella::StepState::current) {
            morvella::cocoa_tests::record("sidebar marks " + step.name);
        }
    }
}

@end

using namespace morvella::cocoa_tests;

namespace {

// What the doors inherit. AppKit promises little of when it calls what.

NSView* inheritedView = nil;
bool disturbs = false;
bool raises = false;

void inheritedAwakeFromNib(id, SEL) {
    record("super awakeFromNib");
}

void inheritedViewDidLoad(id, SEL) {
    record("super viewDidLoad");
}

void inheritedViewDidAppear(id, SEL) {
    record("super viewDidAppear");
}

id view(id, SEL) {
    return inheritedView;
}

void setView(id door, SEL, NSView* view) {
    if (raises) {
        [NSException raise:@"StubException" format:@"raised on purpose"];
    }
    record(std::string("super setView: ") + [[view description] UTF8String]);
    inheritedView = view;
    if (disturbs) {
        [door viewDidLoad];
        [door viewDidAppear];
    }
}

IMP implementation(void (*function)(id, SEL)) {
    return reinterpret_cast<IMP>(function);
}

void flush(id, SEL) {
    record("transaction flush");
}

/// What is put off is done only by the tests.
void putOff(id, SEL, SEL selector, id, NSTimeInterval delay) {
    record(std::string("put off: ") + sel_getName(selector) + " " + std::to_string(delay));
}

void startWatching(id, SEL) {
    record("presses are watched");
}

void screenChanged(id, SEL) {
    record("presses from before do not count");
}

}  // namespace

DoorLifeCycleTest::DoorLifeCycleTest()
    : awaking_([NSViewController class], @selector(awakeFromNib),
               implementation(inheritedAwakeFromNib), "v@:"),
      loading_([NSViewController class], @selector(viewDidLoad),
               implementation(inheritedViewDidLoad), "v@:"),
      appearing_([NSViewController class], @selector(viewDidAppear),
                 implementation(inheritedViewDidAppear), "v@:"),
      viewing_([NSViewController class], @selector(view), reinterpret_cast<IMP>(view), "@@:"),
      setting_([NSViewController class], @selector(setView:), reinterpret_cast<IMP>(setView),
               "v@:@"),
      flushing_(object_getClass([CATransaction class]), @selector(flush), implementation(flush),
                "v@:"),
      puttingOff_([MorvellaInstallerViewController class],
                  @selector(performSelector:withObject:afterDelay:), reinterpret_cast<IMP>(putOff),
                  "v@::@d"),
      watching_(object_getClass([PressMonitor class]), @selector(start),
                implementation(startWatching), "v@:"),
      changing_(object_getClass([PressMonitor class]), @selector(screenChanged),
                implementation(screenChanged), "v@:"),
      mainBundle_([NSBundle class], @selector(mainBundle), bundle_),
      document_([NSAttributedString class], @selector(alloc),
                [Recorder named:"document" standingFor:[NSAttributedString class]]),
      sheet_([NSAlert class], @selector(alloc),
             [StandingSheet named:"sheet" standingFor:[NSAlert class]]),
      door([[[MorvellaInstallerViewController alloc] initWithNibName:nil bundle:nil] autorelease]) {
    NSApp = static_cast<id>(application_);
    place_->door = door;
    for (Recorder* page : {initial, settings, installation}) {
        [page answer:window to:@selector(window)];
        [page answer:place_ to:@selector(superview)];
    }
    [bundle_ answer:[NSURL fileURLWithPath:@"/Bundle/license.rtf" isDirectory:NO]
                 to:@selector(URLForResource:withExtension:)];
    [text answer:[Recorder named:"storage" standingFor:[NSTextStorage class]]
              to:@selector(textStorage)];
    [door setInitialView:static_cast<id>(initial)];
    [door setSettingsView:static_cast<id>(settings)];
    [door setDoInstallView:static_cast<id>(installation)];
    [door setLicenseText:static_cast<id>(text)];
    [door setValue:[SidebarRecorder named:"sidebar" standingFor:[StepsSidebar class]]
            forKey:@"stepsSidebar"];
    [door setView:static_cast<id>(initial)];
    takeRecorded();
}

DoorLifeCycleTest::~DoorLifeCycleTest() {
    NSApp = nil;
    appearing = nil;
    disturbs = false;
    raises = false;
    inheritedView = nil;
}

void DoorLifeCycleTest::start() {
    [door awakeFromNib];
    [door windowIsOnScreen];
    takeNews();
}

const Lines& DoorLifeCycleTest::news() {
    const Lines more = takeRecorded();
    news_.insert(news_.end(), more.begin(), more.end());
    return news_;
}

void DoorLifeCycleTest::takeNews() {
    takeRecorded();
    news_.clear();
}

long DoorLifeCycleTest::times(const std::string& beginning) {
    const Lines& lines = news();
    return std::count_if(lines.begin(), lines.end(),
                         [&](const std::string& line) { return line.starts_with(beginning); });
}

void DoorLifeCycleTest::disturb() {
    disturbs = true;
}

void DoorLifeCycleTest::disturbWork() {
    appearing = door;
}

void DoorLifeCycleTest::raise() {
    raises = true;
}

void DoorLifeCycleTest::hide() {
    inheritedView = static_cast<id>([Recorder named:"nowhere" standingFor:[NSView class]]);
}
