// What the reader of states takes is written and read again as the same one, and can be asked.
#include "document/state_bytes.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace orva;
    const auto read = readState(std::as_bytes(std::span(data, size)), "fuzz");
    if (!read) {
        if (read.error().what.text().empty() || read.error().where.empty())
            std::abort();
        return 0;
    }
    const auto again = readState(writeState(*read), "again");
    if (!again || *again != *read)
        std::abort();
    const SetupForm& setup = read->setup;
    (void)setup.holdsUnknown();
    (void)setup.countsDiffer();
    LineArray array = read->project.array;
    (void)setup.UpdateLineArray(array);
    return 0;
}
