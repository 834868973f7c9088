#pragma once

#include <functional>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace morvella::tests {

/// What a line of the journal is about.
enum class Kind {
    question,  ///< The platform was only asked something.
    log,
    sheet,
    window,
    page,
    control,
    file,
    command,
    defaults,
    timer,
    queue,
    application,
};

/// The text of a journal that holds exactly these lines.
std::string lines(std::initializer_list<std::string_view> lines);

/// What the installer did to the fakes of the platform, in its order, one readable line each: the
/// kind and what happened, as in "log: unknown state reached." The texts below are made to be
/// compared with `lines({...})`.
class Journal {
  public:
    void write(Kind kind, std::string_view what);
    void clear() { entries_.clear(); }

    /// If there is one, it is called with each line before the installer goes on: what the state is
    /// at that moment.
    std::function<void(const std::string& line)> watcher;

    /// Everything, also what the platform was only asked.
    [[nodiscard]] std::string everything() const;
    /// Everything but questions.
    [[nodiscard]] std::string effects() const;
    [[nodiscard]] std::string only(std::initializer_list<Kind> kinds) const;

  private:
    struct Entry {
        Kind kind;
        std::string line;
    };

    std::vector<Entry> entries_;
};

}  // namespace morvella::tests
