#include "support/vocabulary.hpp"

#include "app/product.hpp"
#include "platform/file_url.hpp"

namespace morvella::tests {

namespace {

/// `line(font)` for each of the product's fonts.
template <class Line>
std::string forEachFont(Line line) {
    std::string text;
    for (const char* font : product::fonts) {
        text += (text.empty() ? "" : "\n") + line(std::string(font));
    }
    return text;
}

}  // namespace

std::string logs(const std::string& text) {
    return "log: " + text;
}

std::string unpacks(const std::string& archive, const std::string& folder) {
    return "run: /usr/bin/ditto | -v | -x | -k | /Bundle/" + archive + " | " + folder;
}

std::string packs(const std::string& folder, const std::string& zipFile,
                  const std::string& directory) {
    return "run: /usr/bin/ditto | -c | -k | --sequesterRsrc | --keepParent | " + folder + " | " +
           zipFile + " in " + directory;
}

std::string copiesFonts() {
    return forEachFont([](const std::string& font) {
        return copiesFont("/Bundle/" + font, "/Users/ann/Library/Fonts/" + font);
    });
}

std::string keepsFonts() {
    return forEachFont(
        [](const std::string& font) { return logs("Font already installed:" + font); });
}

std::string copiesFont(const std::string& source, const std::string& target) {
    return logs("Copying: (" + FileUrl::file(source).absoluteString() + ") To: (" +
                FileUrl::file(target).absoluteString() + ")") +
           "\nfile: copied " + source + " to " + target;
}

std::string createsFolder(const std::string& path) {
    return "file: created " + path + "/";
}

std::string trashes(const std::string& path) {
    return "file: trashed " + path;
}

std::string deletesFolder(const std::string& path) {
    return logs("Deleting " + path) + "\n" + trashes(path + "/");
}

std::string failsToTrashFolder(const std::string& path) {
    return logs("failed to move to trash:" + FileUrl::directory(path).absoluteString());
}

std::string installsUtilities() {
    return createsFolder("/Applications/Morvella") + "\n" +
           logs("Installing Tressimo.zip to /Applications/Morvella...") + "\n" +
           unpacks("Tressimo.zip", "/Applications/Morvella");
}

std::string criticalSheet(const std::string& message) {
    return "sheet: critical \"" + message + "\" [Quit]";
}

std::string showsCriticalSheet(const std::string& message) {
    return "window: made key by controller\n" + logs("critical error:" + message) + "\n" +
           criticalSheet(message);
}

std::string reachesUnknownState() {
    return logs("unknown state reached.") + "\n" +
           showsCriticalSheet(
               "The installer reached an unkown state, please try restarting the installer.\n"
               "If the problem persists, please contact support.");
}

std::string quits() {
    return "application: terminated by controller";
}

std::string fillsLicence() {
    return "control: licence text filled with licence";
}

std::string offersDemoSet() {
    return "control: check box enabled\ncontrol: check box shown\ncontrol: check box on";
}

std::string withholdsDemoSet() {
    return "control: check box disabled\ncontrol: check box hidden\ncontrol: check box off";
}

std::string showsVersion() {
    return "control: version label says \"Morvella v" MORVELLA_VERSION "\"";
}

std::string startsIndicator() {
    return "control: installation indicator started by settings indicator\n"
           "control: installation indicator shown";
}

std::string showsLastPage() {
    return "control: installation indicator stopped by controller\n"
           "page: post-installation page";
}

}  // namespace morvella::tests
