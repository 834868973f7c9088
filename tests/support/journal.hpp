#pragma once

#include <functional>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace morvella::tests {

/// The kinds of lines in the journal. Each line begins with its kind.
struct Kind {
    static constexpr std::string_view question = "asked";  ///< Only a query.
    static constexpr std::string_view log = "log";
    static constexpr std::string_view sheet = "sheet";
    static constexpr std::string_view window = "window";
    static constexpr std::string_view page = "page";
    static constexpr std::string_view control = "control";
    static constexpr std::string_view file = "file";
    static constexpr std::string_view command = "run";
    static constexpr std::string_view defaults = "defaults";
    static constexpr std::string_view timer = "timer";
    static constexpr std::string_view queue = "queue";
    static constexpr std::string_view application = "application";
};

/// The text of a journal with exactly these lines.
std::string lines(std::initializer_list<std::string_view> lines);

/// What the installer did to the fake platform, in order, one readable line each: the kind and what
/// happened, as in "log: unknown state reached." Compare the texts with `lines({...})`.
class Journal {
  public:
    void write(std::string_view kind, std::string_view what);
    void clear() { entries_.clear(); }

    /// If set, called with each line as it is written, so that a test can inspect the state at that
    /// moment.
    std::function<void(const std::string& line)> watcher;

    /// Everything, including questions to the platform.
    [[nodiscard]] std::string everything() const;
    /// Everything except questions.
    [[nodiscard]] std::string effects() const;
    [[nodiscard]] std::string only(std::initializer_list<std::string_view> kinds) const;

  private:
    struct Entry {
        std::string_view kind;
        std::string line;
    };

    template <class Predicate>
    [[nodiscard]] std::string linesWhere(Predicate holds) const;

    std::vector<Entry> entries_;
};

}  // namespace morvella::tests
