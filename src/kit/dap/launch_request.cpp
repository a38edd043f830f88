#include "kit/dap/launch_request.h"

#include "engine/edition2/line_reader.h"

#include <QFileInfo>

namespace plum::kit {

using namespace Qt::StringLiterals;

LaunchRequest LaunchRequest::from(const RequestArguments &arguments)
{
    LaunchRequest request;
    const QFileInfo program(arguments.text(u"program"_s));
    if (!program.isFile() || !program.isReadable())
        throw RequestProblem(u"%1 cannot be read"_s.arg(program.filePath()));
    request.program = program.absoluteFilePath();
    request.stopsOnEntry = arguments.flag(u"stopOnEntry"_s);
    request.isHeld = !arguments.flag(u"noDebug"_s);
    request.isDry = arguments.flag(u"dry"_s);
    request.timeout = arguments.seconds(u"timeout"_s);
    request.answers = arguments.texts(u"answers"_s);
    request.typed = arguments.textOr(u"typed"_s, {});
    const RequestArguments variables = arguments.object(u"set"_s);
    for (const QString &name : variables.names()) {
        if (!edition2::isName(name))
            throw RequestProblem(u"\"%1\" is no name of a variable"_s.arg(name));
        request.variables += {name, variables.text(name)};
    }
    return request;
}

} // namespace plum::kit
