#include "support/journal.hpp"

#include <algorithm>

namespace morvella::tests {

namespace {

constexpr std::string_view prefixOf(Kind kind) {
    switch (kind) {
        case Kind::question:
            return "asked: ";
        case Kind::log:
            return "log: ";
        case Kind::sheet:
            return "sheet: ";
        case Kind::window:
            return "window: ";
        case Kind::page:
            return "page: ";
        case Kind::control:
            return "control: ";
        case Kind::file:
            return "file: ";
        case Kind::command:
            return "run: ";
        case Kind::defaults:
            return "defaults: ";
        case Kind::timer:
            return "timer: ";
        case Kind::queue:
            return "queue: ";
        case Kind::application:
            return "application: ";
    }
    return "unknown: ";
}

}  // namespace

std::string lines(std::initializer_list<std::string_view> lines) {
    std::string text;
    for (const std::string_view line : lines) {
        text += line;
        text += '\n';
    }
    return text;
}

void Journal::write(Kind kind, std::string_view what) {
    entries_.push_back({kind, std::string(prefixOf(kind)).append(what)});
    if (watcher) {
        watcher(entries_.back().line);
    }
}

std::string Journal::everything() const {
    std::string text;
    for (const Entry& entry : entries_) {
        text += lines({entry.line});
    }
    return text;
}

std::string Journal::effects() const {
    std::string text;
    for (const Entry& entry : entries_) {
        if (entry.kind != Kind::question) {
            text += lines({entry.line});
        }
    }
    return text;
}

std::string Journal::only(std::initializer_list<Kind> kinds) const {
    std::string text;
    for (const Entry& entry : entries_) {
        if (std::find(kinds.begin(), kinds.end(), entry.kind) != kinds.end()) {
            text += lines({entry.line});
        }
    }
    return text;
}

}  // namespace morvella::tests
