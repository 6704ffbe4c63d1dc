#include "components/pythonscript/pythonrunner.h"

const char* const pythonRunnerSource = R"PYTHON(
import atexit, builtins, gc, linecache, os, shlex, sys, threading, traceback, types
from cowl import text as translate

RECURSION_LIMIT = sys.getrecursionlimit()
FORMAT = traceback.format_exception


def stream(number):
    """Standard output or error: whole lines at once, so that records of the host stay apart."""
    try:
        return open(number, "w", buffering=1, encoding="utf-8", errors="backslashreplace",
                    closefd=False)
    except OSError:
        return None


def described(error):
    try:
        return "".join(FORMAT(type(error), error, error.__traceback__))
    except BaseException:
        return f"{type(error).__name__}: its traceback cannot be shown\n"


def is_interrupt(error):
    """Whether the user's interrupt ended it, also where the script made another end of it."""
    seen = set()
    while error is not None and id(error) not in seen:
        if isinstance(error, KeyboardInterrupt):
            return True
        seen.add(id(error))
        error = error.__context__ or error.__cause__
    return False


def exit_text(end):
    """Why a script that asked to leave did so; None when all is well."""
    if end.code is None or (isinstance(end.code, int) and end.code == 0):
        return None
    if isinstance(end.code, int):
        return translate("The script ended with the status %1", end.code)
    return str(end.code) or translate("The script ended with the status %1", 1)


def execute(source, path, main):
    """A failure's text or None, and whether it was the user's interrupt that ended the script."""
    try:
        exec(compile(source, path, "exec", dont_inherit=True), main.__dict__)
        return None, False
    except SystemExit as end:
        try:
            return exit_text(end), is_interrupt(end)
        except BaseException as error:
            return described(error), is_interrupt(error)
    except BaseException as error:
        # The first frame is the one above, which is none of the script's.
        error.__traceback__ = error.__traceback__ and error.__traceback__.tb_next
        return described(error), is_interrupt(error)


def finish():
    """What the end of a program does: threads, exit functions, streams. As execute()."""
    try:
        for thread in threading.enumerate():
            if thread is not threading.current_thread() and not thread.daemon:
                thread.join()
        atexit._run_exitfuncs()
        for out in (sys.stdout, sys.stderr):
            if out is not None and not out.closed:
                out.flush()
        return None, False
    except BaseException as error:
        return described(error), is_interrupt(error)


def straighten(main, before):
    sys.settrace(None)
    sys.setprofile(None)
    sys.setrecursionlimit(RECURSION_LIMIT)
    sys.argv, sys.path[:], sys.stdout, sys.stderr = before
    sys.modules["__main__"] = host
    main.__dict__.clear()
    linecache.clearcache()
    gc.collect()


host = sys.modules["__main__"]


def run(source, path, arguments):
    process = os.getpid()
    before = sys.argv, list(sys.path), sys.stdout, sys.stderr
    main = types.ModuleType("__main__")
    main.__file__ = path
    main.__builtins__ = builtins
    try:
        sys.argv = [path, *shlex.split(arguments)]
        sys.modules["__main__"] = main
        sys.stdout, sys.stderr = stream(1), stream(2)
        # A traceback shows lines of what was run, also when the file was a pipe or has changed.
        lines = source.decode("utf-8", "replace").splitlines(True)
        linecache.cache[path] = len(source), None, lines, path
        failure, interrupted = execute(source, path, main)
    except BaseException as error:
        failure, interrupted = described(error), is_interrupt(error)
    late_failure, late_interrupt = finish()
    failure, interrupted = failure or late_failure, interrupted or late_interrupt
    if os.getpid() != process:
        os._exit(1 if failure else 0)  # a child that the script made must not do the host's work
    straighten(main, before)
    return failure, interrupted
)PYTHON";
