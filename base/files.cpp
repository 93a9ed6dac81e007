#include "files.h"

#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <poll.h>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace tlvmsg::base {

namespace fs = std::filesystem;

namespace {

[[noreturn]] void cannot_read(const std::string &path, const std::string &reason) {
    throw IoError(path == "-" ? "cannot read standard input: " + reason
                              : "cannot read '" + path + "': " + reason);
}

[[noreturn]] void cannot_write(const std::string &path, const std::string &reason) {
    throw IoError("cannot write '" + path + "': " + reason);
}

std::string last_error() { return std::strerror(errno); }

class Descriptor {
public:
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor() { close(); }
    Descriptor(Descriptor &&other) noexcept : number_(std::exchange(other.number_, -1)) {}
    Descriptor &operator=(Descriptor &&) = delete;

    explicit operator bool() const { return number_ >= 0; }
    int number() const { return number_; }

    // Whether all that was written has arrived, as far as closing tells. Standard input stays open.
    bool close() {
        const int number = std::exchange(number_, -1);
        return number <= STDIN_FILENO || ::close(number) == 0;
    }

private:
    int number_;
};

Descriptor open_to_read(const std::string &path) {
    if (path == "-") {
        return Descriptor(STDIN_FILENO);
    }
    Descriptor file(
        open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)); // opening a pipe would wait for a writer
    std::error_code error;
    if (!file && errno == ENOENT && fs::is_symlink(path, error)) {
        cannot_read(path, "it is a symbolic link that leads nowhere");
    }
    if (!file) {
        cannot_read(path, last_error());
    }
    return file;
}

bool read_all(int descriptor, std::string &text) {
    std::array<char, 1 << 16> buffer;
    for (;;) {
        const ssize_t size = read(descriptor, buffer.data(), buffer.size());
        if (size < 0 && errno == EINTR) {
            continue;
        }
        if (size <= 0 || text.size() > longest_text) {
            return size >= 0;
        }
        text.append(buffer.data(), static_cast<size_t>(size));
    }
}

bool write_all(int descriptor, std::string_view text) {
    while (!text.empty()) {
        const ssize_t size = write(descriptor, text.data(), text.size());
        if (size < 0 && errno != EINTR) {
            return false;
        }
        text.remove_prefix(size > 0 ? static_cast<size_t>(size) : 0);
    }
    return true;
}

// Whether a regular file has these bytes; unlike read_file, of any length.
bool has_text(const std::string &path, const std::string &text) {
    struct stat found;
    if (stat(path.c_str(), &found) != 0 || !S_ISREG(found.st_mode) ||
        static_cast<size_t>(found.st_size) != text.size()) {
        return false;
    }
    const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
    std::array<char, 1 << 16> buffer;
    size_t same = 0;
    for (ssize_t size; file && (size = read(file.number(), buffer.data(), buffer.size())) > 0;) {
        const auto count = static_cast<size_t>(size);
        if (text.compare(same, count, std::string_view(buffer.data(), count)) != 0) {
            return false;
        }
        same += count;
    }
    return file && same == text.size();
}

void create_directories_above(const std::string &path) {
    std::error_code error;
    if (const fs::path parent = fs::path(path).parent_path(); !parent.empty()) {
        fs::create_directories(parent, error);
        if (error) {
            throw IoError("cannot create '" + parent.string() + "': " + error.message());
        }
    }
}

void write_in_place(const std::string &path, const std::string &text) {
    Descriptor file(open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666));
    if (!file || !write_all(file.number(), text) || !file.close()) {
        cannot_write(path, last_error());
    }
}

// Where the symbolic links lead, also when nothing is there yet.
std::string behind_links(const std::string &path) {
    constexpr int most_links = 40; // as many as the system follows
    fs::path target = path;
    std::error_code error;
    for (int links = 0; fs::is_symlink(target, error); ++links) {
        if (links == most_links) {
            cannot_write(path, std::strerror(ELOOP));
        }
        target = target.parent_path() / fs::read_symlink(target, error);
    }
    return target.string();
}

mode_t mode_of_new_files() {
    const mode_t mask = umask(0); // which can only be asked for by setting it
    umask(mask);
    return 0666 & ~mask;
}

// A file beside another one, which it replaces when all is written; otherwise nothing is left of it.
class Replacement {
public:
    explicit Replacement(const std::string &target)
        : target_(target), directory_(fs::path(target).parent_path()),
          path_((directory_ / ".tlvmsg-XXXXXX").string()), file_(mkostemp(path_.data(), O_CLOEXEC)) {
        if (!file_) {
            const std::string where = directory_.empty() ? "." : directory_.string();
            cannot_write(target, "no file can be made beside it, in '" + where + "': " + last_error());
        }
    }
    ~Replacement() {
        if (!done_) {
            unlink(path_.c_str());
        }
    }
    Replacement(const Replacement &) = delete;
    Replacement &operator=(const Replacement &) = delete;

    // The owner first, since a change of it takes bits from the mode.
    void be_like(const struct stat &old) {
        const bool same_owner = old.st_uid == geteuid() && old.st_gid == getegid();
        if (!same_owner) { // otherwise the file is the user's, who may write it
            [[maybe_unused]] const int kept = fchown(file_.number(), old.st_uid, old.st_gid);
        }
        set_mode(old.st_mode & 07777);
    }

    void set_mode(mode_t mode) {
        if (fchmod(file_.number(), mode) != 0) {
            cannot_write(target_, last_error());
        }
    }

    void finish(const std::string &text) {
        done_ = write_all(file_.number(), text) && fsync(file_.number()) == 0 && file_.close() &&
                rename(path_.c_str(), target_.c_str()) == 0;
        if (!done_) {
            cannot_write(target_, last_error());
        }
        const Descriptor directory(open(directory_.empty() ? "." : directory_.c_str(), O_RDONLY | O_CLOEXEC));
        if (directory) {
            fsync(directory.number()); // the new name; not every file system can
        }
    }

private:
    std::string target_;
    fs::path directory_;
    std::string path_;
    Descriptor file_;
    bool done_ = false;
};

} // namespace

std::string read_file(const std::string &path) {
    const Descriptor file = open_to_read(path);
    struct stat found;
    if (fstat(file.number(), &found) != 0) {
        cannot_read(path, last_error());
    }
    if (S_ISDIR(found.st_mode)) {
        cannot_read(path, "it is a directory");
    }
    const bool is_pipe = S_ISFIFO(found.st_mode) && path != "-";
    if (is_pipe) {
        pollfd writer{file.number(), POLLIN, 0};
        poll(&writer, 1, 1000);
    }
    if (path != "-") {
        fcntl(file.number(), F_SETFL, O_RDONLY); // from now on reading waits
    }
    std::string text;
    if (!read_all(file.number(), text)) {
        cannot_read(path, last_error());
    }
    if (text.size() > longest_text) {
        cannot_read(path, "it has more than " + std::to_string(longest_text) + " bytes");
    }
    if (is_pipe && text.empty()) {
        cannot_read(path, "it is a pipe, and nobody writes to it");
    }
    return text;
}

void replace_file(const std::string &path, const std::string &text) {
    if (has_text(path, text)) {
        return;
    }
    const std::string target = behind_links(path);
    create_directories_above(target);
    struct stat old;
    const bool exists = stat(target.c_str(), &old) == 0;
    if (exists && !S_ISREG(old.st_mode)) {
        write_in_place(target, text);
        return;
    }
    if (exists && access(target.c_str(), W_OK) != 0) {
        cannot_write(path, last_error());
    }
    if (exists && old.st_nlink > 1) {
        cannot_write(path, "it has " + std::to_string(old.st_nlink) +
                               " hard links, and the others would keep the old text");
    }
    Replacement replacement(target);
    if (exists) {
        replacement.be_like(old);
    } else {
        replacement.set_mode(mode_of_new_files());
    }
    replacement.finish(text);
}

void write_if_changed(const std::string &path, const std::string &text) {
    if (!has_text(path, text)) {
        create_directories_above(path);
        write_in_place(path, text);
    }
}

void touch_file(const std::string &path) {
    create_directories_above(path);
    const Descriptor file(open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0666));
    if (!file || futimens(file.number(), nullptr) != 0) {
        cannot_write(path, last_error());
    }
}

} // namespace tlvmsg::base
