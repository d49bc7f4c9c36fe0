#include "tools/dbservicectl/Report.h"

#include <fmt/format.h>

#include <algorithm>

namespace dbservicectl {

void Report::tell(const std::string& what, const std::string& value) {
    lines_.push_back({what, value, {}, {}});
}

void Report::problem(const std::string& what, const std::string& problem,
                     const std::string& advice) {
    lines_.push_back({what, {}, problem, advice});
}

bool Report::look(const std::string& what, const std::function<void()>& at) {
    // Numbers of the client, as those of lost connections.
    const auto isOfClient = [](int number) { return number >= 2000 && number < 3000; };
    try {
        at();
        return true;
    } catch (const Failure& failure) {
        if (failure.exit() != Exit::Failed || isOfClient(dbaccess::LastError().number)) throw;
        problem(what, failure.what(), failure.next());
        return false;
    }
}

std::size_t Report::problems() const {
    return static_cast<std::size_t>(std::count_if(
        lines_.begin(), lines_.end(), [](const Line& line) { return line.problem.has_value(); }));
}

void Report::print(const Session& session) const {
    if (session.format() != Format::Table) {
        Output output = session.output({{"What"}, {"Value"}, {"Problem"}, {"Do"}});
        for (const Line& line : lines_)
            output.add({line.what, line.value, line.problem, line.advice});
        return output.finish();
    }
    Output output = session.output({{"What"}, {"Value"}});
    for (const Line& line : lines_)
        if (line.value) output.add({line.what, line.value});
    output.finish();
    for (const Line& line : lines_)
        if (line.problem)
            fmt::print("problem: {}: {}{}{}\n", line.what, harmless(*line.problem),
                       line.advice->empty() ? "" : " / do: ", harmless(*line.advice));
}

std::string sizeText(std::uint64_t bytes) {
    const double megabytes = static_cast<double>(bytes) / 1e6;
    return megabytes < 1000 ? fmt::format("{:.1f} MB", megabytes)
                            : fmt::format("{:.1f} GB", megabytes / 1000);
}

}  // namespace dbservicectl
