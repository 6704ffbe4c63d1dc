#include "components/pythonscript/pythonrunner.h"

const char* const pythonRunnerSource = R"PYTHON(
import atexit, builtins, gc, linecache, os, shlex, signal, sys, threading, traceback, types
from importlib.util import decode_source
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
        return translate("%1: its traceback cannot be shown", type(error).__name__)


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


def text_lines(source):
    """The lines as a traceback shows them, whatever the bytes are."""
    try:
        text = decode_source(source)
    except (SyntaxError, ValueError, LookupError):
        text = source.decode("utf-8", "replace")
    return [line + "\n" for line in text.split("\n")]


def state():
    """What belongs to the process and is to be the same behind a script."""
    handlers = {number: signal.getsignal(number) for number in signal.valid_signals()}
    try:
        folder = os.getcwd()
    except OSError:
        folder = None  # removed while it was the current one
    return sys.argv, list(sys.path), sys.stdout, sys.stderr, folder, handlers


def restore(before):
    sys.argv, sys.path[:], sys.stdout, sys.stderr, folder, handlers = before
    try:
        if folder is not None:
            os.chdir(folder)
    except OSError:
        pass  # the script removed it
    if hasattr(signal, "setitimer"):
        for timer in signal.ITIMER_REAL, signal.ITIMER_VIRTUAL, signal.ITIMER_PROF:
            signal.setitimer(timer, 0)
    for number, handler in handlers.items():
        if handler is not None and signal.getsignal(number) is not handler:
            signal.signal(number, handler)


def straighten(main, before):
    sys.settrace(None)
    sys.setprofile(None)
    sys.setrecursionlimit(RECURSION_LIMIT)
    restore(before)
    sys.modules["__main__"] = host
    main.__dict__.clear()
    linecache.clearcache()
    gc.collect()


host = sys.modules["__main__"]


def run(source, path, arguments):
    process = os.getpid()
    before = state()
    main = types.ModuleType("__main__")
    main.__file__ = path
    main.__builtins__ = builtins
    try:
        sys.argv = [path, *shlex.split(arguments)]
        sys.modules["__main__"] = main
        sys.stdout, sys.stderr = stream(1), stream(2)
        # A traceback shows lines of what was run, also when the file was a pipe or has changed.
        linecache.cache[path] = len(source), None, text_lines(source), path
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
