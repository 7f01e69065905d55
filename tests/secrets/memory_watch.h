// A call on a stack of its own and with every block that it allocates kept as it was when it was
// freed, so that a test can look for what the call left behind.
#ifndef ZOKECC_TESTS_SECRETS_MEMORY_WATCH_H
#define ZOKECC_TESTS_SECRETS_MEMORY_WATCH_H

#include <functional>
#include <string>
#include <vector>

#include "tests/secrets/secret.h"

namespace zokecc_test::secrets {

class MemoryWatch {
public:
    // Runs the call. The program is linked with -z now: the dynamic linker would store registers on
    // the stack where it looks up a function at its first call.
    explicit MemoryWatch(const std::function<void()> &call);
    ~MemoryWatch();
    MemoryWatch(const MemoryWatch &) = delete;
    MemoryWatch &operator=(const MemoryWatch &) = delete;

    // A line for every piece of a secret that is still there.
    std::vector<std::string> find(const std::vector<Secret> &secrets) const;

    // How far down the call went, in bytes.
    size_t stack_depth() const;
    // The numbers that gen_random_number gave it, in their order.
    const std::vector<mint> &drawn() const { return drawn_; }

private:
    std::vector<mint> drawn_;
};

}  // namespace zokecc_test::secrets

#endif
