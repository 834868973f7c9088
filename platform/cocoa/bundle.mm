#import <AppKit/AppKit.h>

#include "platform/cocoa/bundle.h"
#include "platform/cocoa/controls.h"
#include "platform/cocoa/conversions.h"

namespace morvella {

std::optional<std::string> CocoaBundle::pathForResource(const std::string& name) const {
    return optionalTextOf([bundle_.get() pathForResource:stringOf(name) ofType:nil]);
}

std::shared_ptr<AttributedString> CocoaBundle::attributedStringForResource(
    const std::string& name) const {
    NSURL* url = [bundle_.get() URLForResource:stringOf(name) withExtension:nil];
    if (!url) {
        return nullptr;
    }
    NSError* error = nil;
    NSAttributedString* text = nil;
    @try {
        text = [[[NSAttributedString alloc] initWithURL:url
                                                options:@{}
                                     documentAttributes:NULL
                                                  error:&error] autorelease];
    } @catch (NSException* exception) {
        // A damaged document may raise instead of failing.
    }
    return handleOf<CocoaAttributedString>(text);
}

std::optional<std::string> CocoaBundle::infoDictionaryText(const std::string& key) const {
    id value = [[bundle_.get() infoDictionary] valueForKey:stringOf(key)];
    return [value isKindOfClass:[NSString class]] ? optionalTextOf(value) : std::nullopt;
}

std::shared_ptr<const Bundle> CocoaBundles::mainBundle() const {
    return std::make_shared<const CocoaBundle>([NSBundle mainBundle]);
}

std::shared_ptr<const Bundle> CocoaBundles::bundleWithUrl(const FileUrl& url) const {
    NSBundle* bundle = [NSBundle bundleWithURL:urlOf(url)];
    return bundle ? std::make_shared<const CocoaBundle>(bundle) : nullptr;
}

}  // namespace morvella
