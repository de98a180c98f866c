// The command orvel: the library for people and pipes. The command line is read here; each
// subcommand has a file of its own, NAME_command.cpp. All text is UTF-8 on both targets.
#include "commands.h"
#include "messages.h"
#include "runtime.h"

int main(int argc, char **argv)
{
    CLI::App app{"Orvel: breaks, spelling, fonts and dictionaries of Lao text.", "orvel"};
    Command chosen;
    app.set_version_flag("--version", "orvel " ORVEL_VERSION);
    app.require_subcommand(1);
    app.allow_windows_style_options(false);  // a path may begin with a slash
    app.footer("Example: orvel wrap --mark '|' letter.txt\n"
               "orvel COMMAND --help tells more. Exit status: 0 done, 1 something in the input "
               "could not be\n"
               "done, 2 wrong usage.");
    AddWrapCommand(&app, &chosen);
    AddCheckCommand(&app, &chosen);
    AddOptionsCommand(&app, &chosen);
    AddFontsCommand(&app, &chosen);
    AddDictCommand(&app, &chosen);
    AddSortCommand(&app, &chosen);
    AddRomanizeCommand(&app, &chosen);
    AddEmailCommand(&app, &chosen);
    AddRecodeCommand(&app, &chosen);
    AddConvertCommand(&app, &chosen);
    UseByteStreams();
    argv = Utf8Arguments(&argc, argv);
    try {
        app.parse(argc, argv);
        return chosen ? chosen() : kWrongUsage;
    } catch (const CLI::ParseError &failure) {
        return app.exit(failure) ? kWrongUsage : WriteOutput("");  // help is output like any other
    } catch (const std::exception &failure) {
        return Tell(failure.what(), kNotDone);
    }
}
