#include "platform/cocoa/controls.h"

#include "platform/cocoa/conversions.h"

namespace morvella {

// The values are passed to the platform unchanged.
static_assert(static_cast<int>(ControlState::mixed) == NSControlStateValueMixed);
static_assert(static_cast<int>(ControlState::off) == NSControlStateValueOff);
static_assert(static_cast<int>(ControlState::on) == NSControlStateValueOn);
static_assert(static_cast<int>(ProgressIndicatorStyle::bar) == NSProgressIndicatorStyleBar);
static_assert(static_cast<int>(ProgressIndicatorStyle::spinning) ==
              NSProgressIndicatorStyleSpinning);

ControlState CocoaButton::state() const {
    return static_cast<ControlState>([object() state]);
}

void CocoaButton::setState(ControlState state) {
    [object() setState:static_cast<NSInteger>(state)];
}

void CocoaButton::setEnabled(bool enabled) {
    [object() setEnabled:enabled];
}

void CocoaButton::setHidden(bool hidden) {
    [object() setHidden:hidden];
}

void CocoaTextFieldCell::setTitle(const std::string& title) {
    [object() setTitle:stringOf(title)];
}

namespace {

/// Text without a colour of its own is black even on a dark background.
void colorWhatHasNoColor(NSMutableAttributedString* text) {
    NSRange range = NSMakeRange(0, 0);
    for (NSUInteger start = 0; start < [text length]; start = NSMaxRange(range)) {
        if (![text attribute:NSForegroundColorAttributeName atIndex:start effectiveRange:&range]) {
            [text addAttribute:NSForegroundColorAttributeName
                         value:[NSColor textColor]
                         range:range];
        }
    }
}

}  // namespace

void CocoaTextView::setAttributedString(const std::shared_ptr<AttributedString>& text) {
    NSAttributedString* content = objectOf(text.get());
    if (!content) {
        content = [[[NSAttributedString alloc] initWithString:@""] autorelease];
    }
    [[object() textStorage] setAttributedString:content];
    colorWhatHasNoColor([object() textStorage]);
}

CocoaProgressIndicator::CocoaProgressIndicator(NSProgressIndicator* indicator) : Handle(indicator) {
    [indicator setUsesThreadedAnimation:YES];
}

void CocoaProgressIndicator::startAnimation(const Object* sender) {
    [object() startAnimation:objectOf(sender)];
}

void CocoaProgressIndicator::stopAnimation(const Object* sender) {
    [object() stopAnimation:objectOf(sender)];
}

void CocoaProgressIndicator::setHidden(bool hidden) {
    [object() setHidden:hidden];
}

std::shared_ptr<ProgressIndicator> CocoaControlFactory::makeProgressIndicator(
    const ProgressIndicatorSettings& settings) {
    const NSRect frame = NSMakeRect(settings.x, settings.y, settings.width, settings.height);
    NSProgressIndicator* indicator =
        [[[NSProgressIndicator alloc] initWithFrame:frame] autorelease];
    [indicator setStyle:static_cast<NSProgressIndicatorStyle>(settings.style)];
    [indicator setIndeterminate:settings.indeterminate];
    [indicator setHidden:settings.hidden];
    return std::make_shared<CocoaProgressIndicator>(indicator);
}

}  // namespace morvella
