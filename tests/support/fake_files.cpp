#include "support/fake_files.hpp"

#include "platform/paths.hpp"

namespace morvella::tests {

namespace {

std::string describe(const FileUrl& url) {
    return url.path() + (url.namesDirectory() && url.path() != "/" ? "/" : "");
}

std::string describe(StandardDirectory directory, Domain domain) {
    const std::string name = directory == StandardDirectory::applications ? "applications"
                             : directory == StandardDirectory::users      ? "users"
                                                                          : "documents";
    return name + (domain == Domain::local ? " folder of the machine" : " folder of the user");
}

}  // namespace

void FakeDisk::addFolder(const std::string& path) {
    for (std::string folder = path; !folder.empty() && !items.contains(folder);
         folder = deletingLastPathComponent(folder)) {
        items[folder] = {.isFolder = true};
    }
}

void FakeDisk::addFile(const std::string& path, const std::string& contents) {
    addFolder(deletingLastPathComponent(path));
    items[path] = {.contents = contents};
}

void FakeDisk::remove(const std::string& path) {
    std::erase_if(items, [&](const auto& item) {
        return item.first == path || item.first.starts_with(path + "/");
    });
}

const DiskItem* FakeDisk::find(const std::string& path) const {
    const auto item = items.find(FileUrl::file(path).path());
    return item == items.end() ? nullptr : &item->second;
}

FileUrl FakeDisk::fileUrl(const std::string& path) const {
    const DiskItem* item = find(path);
    return item && item->isFolder ? FileUrl::directory(path) : FileUrl::file(path);
}

bool FakeDisk::isReachable(const FileUrl& url, ErrorOut error) const {
    journal_.write(Kind::question, "reachable " + describe(url) + (error ? ", and why not" : ""));
    if (holds(url.path())) {
        return true;
    }
    if (error) {
        *error = Error{"nothing at " + url.path()};
    }
    return false;
}

bool FakeDisk::fileExists(const std::string& path) const {
    journal_.write(Kind::question, "exists " + path);
    const DiskItem* item = find(path);
    return item && !item->isDanglingLink;
}

bool FakeDisk::isReadable(const std::string& path) const {
    journal_.write(Kind::question, "readable " + path);
    const DiskItem* item = find(path);
    return item && item->readable;
}

bool FakeDisk::isWritable(const std::string& path) const {
    journal_.write(Kind::question, "writable " + path);
    const DiskItem* item = find(path);
    return item && item->writable;
}

std::optional<std::vector<std::string>> FakeDisk::contentsOfDirectory(
    const std::string& path) const {
    journal_.write(Kind::question, "entries of " + path);
    const auto listing = listings.find(path);
    return listing == listings.end() ? std::nullopt : std::optional(listing->second);
}

std::optional<std::string> FakeDisk::contentsOfFile(const std::string& path) const {
    journal_.write(Kind::question, "contents of " + path);
    const DiskItem* item = find(path);
    return item && item->readable && !item->isFolder ? std::optional(item->contents) : std::nullopt;
}

bool FakeDisk::change(const std::string& what, ErrorOut error,
                      const std::function<void()>& effect) {
    journal_.write(Kind::file, error ? what : what + " without asking why");
    const auto outcome = outcomes.find(what);
    if (outcome == outcomes.end()) {
        effect();
        return true;
    }
    if (outcome->second.takesEffect) {
        effect();
    }
    if (outcome->second.error && error) {
        *error = outcome->second.error;
    }
    return outcome->second.result;
}

bool FakeDisk::createDirectory(const FileUrl& url, ErrorOut error) {
    return change("created " + describe(url), error, [&] { addFolder(url.path()); });
}

bool FakeDisk::copyItem(const FileUrl& source, const FileUrl& target, ErrorOut error) {
    return change("copied " + describe(source) + " to " + describe(target), error,
                  [&] { items[target.path()] = items[source.path()]; });
}

bool FakeDisk::moveItem(const FileUrl& source, const FileUrl& target, ErrorOut error) {
    return change("moved " + describe(source) + " to " + describe(target), error,
                  [&] { relocate(source.path(), target.path()); });
}

bool FakeDisk::trashItem(const FileUrl& url, ErrorOut error) {
    return change("trashed " + describe(url), error, [&] { remove(url.path()); });
}

void FakeDisk::relocate(const std::string& source, const std::string& target) {
    const std::map<std::string, DiskItem> before = items;
    remove(source);
    for (const auto& [path, item] : before) {
        if (path == source || path.starts_with(source + "/")) {
            items[target + path.substr(source.size())] = item;
        }
    }
}

std::vector<FileUrl> FakeStandardFolders::urls(StandardDirectory directory, Domain domain) const {
    journal_.write(Kind::question, "every " + describe(directory, domain));
    const bool known = directory == StandardDirectory::applications && domain == Domain::local;
    return known ? applications : std::vector{FileUrl::directory("/no such folder")};
}

std::optional<FileUrl> FakeStandardFolders::url(StandardDirectory directory, Domain domain,
                                                ErrorOut error) const {
    journal_.write(Kind::question, "the " + describe(directory, domain));
    const bool isUsers = directory == StandardDirectory::users && domain == Domain::local;
    const bool isDocuments = directory == StandardDirectory::documents && domain == Domain::user;
    if (!isUsers && !isDocuments) {
        return FileUrl::directory("/no such folder");
    }
    const FolderAnswer& answer = isUsers ? users : documents;
    if (answer.error && error) {
        *error = answer.error;
    }
    return answer.url;
}

}  // namespace morvella::tests
