#include "support/journal.hpp"

#include <algorithm>

namespace morvella::tests {

std::string lines(std::initializer_list<std::string_view> lines) {
    std::string text;
    for (const std::string_view line : lines) {
        text += line;
        text += '\n';
    }
    return text;
}

void Journal::write(std::string_view kind, std::string_view what) {
    entries_.push_back({kind, std::string(kind).append(": ").append(what)});
    if (watcher) {
        watcher(entries_.back().line);
    }
}

template <class Predicate>
std::string Journal::linesWhere(Predicate holds) const {
    std::string text;
    for (const Entry& entry : entries_) {
        text += holds(entry.kind) ? lines({entry.line}) : "";
    }
    return text;
}

std::string Journal::everything() const {
    return linesWhere([](std::string_view) { return true; });
}

std::string Journal::effects() const {
    return linesWhere([](std::string_view kind) { return kind != Kind::question; });
}

std::string Journal::only(std::initializer_list<std::string_view> kinds) const {
    return linesWhere([&](std::string_view kind) {
        return std::find(kinds.begin(), kinds.end(), kind) != kinds.end();
    });
}

}  // namespace morvella::tests
