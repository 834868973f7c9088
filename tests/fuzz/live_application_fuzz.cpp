#include <memory>
#include <string>
#include <vector>

#include "fuzz.hpp"
#include "platform/text.hpp"
#include "support/installer_test.hpp"

namespace {

using morvella::fuzz::requireEqual;

std::vector<std::string> split(const std::string& text, const std::string& separator) {
    std::vector<std::string> pieces(1);
    for (size_t i = 0; i < text.size();) {
        if (text.compare(i, separator.size(), separator) == 0) {
            pieces.emplace_back();
            i += separator.size();
        } else {
            pieces.back() += text[i++];
        }
    }
    return pieces;
}

/// Read from the end: an extension is what stands there after a dot, unless nothing or a slash
/// comes before that dot.
bool hasExtensionApp(std::string path) {
    while (path.size() > 1 && path.back() == '/') {
        path.pop_back();
    }
    const std::string ending = ".app";
    if (path.size() <= ending.size() || path.substr(path.size() - ending.size()) != ending) {
        return false;
    }
    return path[path.size() - ending.size() - 1] != '/';
}

/// The bundle that the installer is expected to open; empty if there is none.
std::string bundleIn(const std::string& liveApplication) {
    for (const std::string& piece : split(liveApplication, "/Contents/MacOS/Live")) {
        if (hasExtensionApp(piece)) {
            return piece.substr(0, piece.find_last_not_of('/') + 1);
        }
    }
    return "";
}

/// The journal of a run whose bundle, if there is one, says `version`.
std::string expectedJournal(const std::string& bundle, const std::string& version) {
    const std::string preferences = "/Users/ann/Library/Preferences/Ableton/Live ";
    std::string journal;
    std::string folder = preferences + "(null)";
    if (!bundle.empty()) {
        journal = "asked: bundle at " + bundle + "/\nasked: information CFBundleVersion\n";
        folder = preferences + split(version, " ")[0];
    }
    return journal + "asked: reachable " + folder +
           "/Library.cfg\ncontrol: label says \"Not found\"\n"
           "log: couldn't get usrlib info, status:1\n";
}

}  // namespace

/// The first line of the input is the Live application, the second one is its version.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    const std::string text = morvella::fuzz::textOf(data, size);
    if (!morvella::isUtf8(text)) {
        return 0;  // A launch argument that is not UTF-8 is no text.
    }
    const size_t lineEnd = text.find('\n');
    const std::string liveApplication = text.substr(0, lineEnd);
    const std::string version = lineEnd == std::string::npos ? "" : text.substr(lineEnd + 1);
    const std::string bundle = bundleIn(liveApplication);

    morvella::tests::FakePlatform fakes;
    morvella::tests::FakeViewController viewController(fakes.journal);
    morvella::tests::Controller controller(viewController, fakes.platform);
    controller.setSettingsUserLibLabel(
        std::make_shared<morvella::tests::FakeTextFieldCell>("label", fakes.journal));
    if (!bundle.empty()) {
        fakes.bundles.add(bundle).information["CFBundleVersion"] = version;
    }

    const bool found =
        controller.setUserLibUsingLiveApp(std::make_shared<const std::string>(liveApplication));
    morvella::fuzz::require(!found, "a User Library was found where there is none");
    const bool tooShort = morvella::utf16Length(liveApplication) <= 1;
    requireEqual(fakes.journal.everything(),
                 tooShort ? "log: Couldn't get executable\n" : expectedJournal(bundle, version),
                 "the journal");
    return 0;
}
