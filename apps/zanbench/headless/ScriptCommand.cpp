#include "zanbench/Commands.h"

#include "zanbench/headless/HeadlessApplication.h"
#include "zanbench/headless/ScriptRun.h"

namespace zan::host {

ExitCode runScript(const QStringList& arguments, ProcessArguments process)
{
    const Parsed<ScriptOptions> parsed = parseScript(arguments);
    if (!parsed.options)
        return answer(parsed);
    HeadlessApplication application(process);
    ScriptRun run(*parsed.options);
    application.setReport([&run](const QString& message) { run.report().fail(message); });
    run.run();
    application.setReport(&complain);
    return ExitCode(run.exitCode());
}

} // namespace zan::host
