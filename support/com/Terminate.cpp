// What happens when an exception leaves where none may: the process ends, as it would anyhow. The run-time
// library's own handler would write the exception's name to a console that the host does not have, and brings
// 75 KB with it to make that name readable. Link this file as an object, not from an archive.

#include <cstdlib>

namespace __gnu_cxx {
// The name is the run-time library's, which has it as the first terminate handler.
void __verbose_terminate_handler();   // NOLINT(bugprone-reserved-identifier)
void __verbose_terminate_handler() {  // NOLINT(bugprone-reserved-identifier)
    std::abort();
}
}  // namespace __gnu_cxx
