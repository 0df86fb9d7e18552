"""Structured Text in a Bazel build.

    load("//share/bazel:norvane.bzl", "norvane_program")

    norvane_program(
        name = "pump",
        srcs = ["lib/timers.st", "pump.st"],     # in the order in which they are compiled
        target = "target.xml",
        options = ["-o1"],
        norvane = "//tools:norvane",             # the two programs, as files of the build
        compiler = "//tools:compiler",
    )

makes pump.asm and pump.dbi. An action sees its declared inputs alone: the sources, the target description, and the two
programs, which must lie in one folder. Names are those below the execution root, so no absolute path gets into the
outputs, and with SOURCE_DATE_EPOCH fixed equal inputs give equal bytes: caches and remote executors may share them.
"""

def _norvane_program_impl(ctx):
    text = ctx.actions.declare_file(ctx.label.name + ".asm")
    debug = ctx.actions.declare_file(ctx.label.name + ".dbi")

    arguments = ctx.actions.args()
    arguments.add("build")
    arguments.add_all(ctx.files.srcs)
    arguments.add("-i", ctx.file.target)
    arguments.add("-o", text)
    arguments.add("--color", "never")
    arguments.add_all(ctx.attr.options, format_each = "--compiler-option=%s")
    if ctx.attr.strict:
        arguments.add_all(["--werror", "--notes=error"])

    ctx.actions.run(
        executable = ctx.executable.norvane,
        arguments = [arguments],
        inputs = ctx.files.srcs + [ctx.file.target],
        tools = [ctx.executable.compiler],
        outputs = [text, debug],
        env = {"SOURCE_DATE_EPOCH": str(ctx.attr.epoch), "TZ": "UTC"},
        mnemonic = "NorvaneProgram",
        progress_message = "Compiling Structured Text %s" % ctx.label,
    )
    return [DefaultInfo(files = depset([text, debug]))]

norvane_program = rule(
    implementation = _norvane_program_impl,
    doc = "Compiles Structured Text into an assembler text and a debug file.",
    attrs = {
        "srcs": attr.label_list(allow_files = [".st"], mandatory = True, allow_empty = False),
        "target": attr.label(allow_single_file = [".xml"], mandatory = True),
        "options": attr.string_list(doc = "Switches of the compiler, such as -o1."),
        "strict": attr.bool(default = False, doc = "Whether warnings and notes stop the build."),
        "epoch": attr.int(default = 0, doc = "The time that the outputs name, in seconds since 1970."),
        "norvane": attr.label(allow_single_file = True, executable = True, cfg = "exec", mandatory = True),
        "compiler": attr.label(allow_single_file = True, executable = True, cfg = "exec", mandatory = True),
    },
)
