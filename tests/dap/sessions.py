"""Whole sessions with "norvane debug".   sessions.py NORVANE SOURCE_FOLDER SCRATCH_FOLDER SESSION

What the values must be follows from main.st: in each scan block.count grows by twice the level (10), total by 6,
grid[n] by n for n from 1 to 3, kept by 1.
"""

import json
import os
import shutil
import sys
import time

from client import Client, Failure, expect

NORVANE, SOURCES, SCRATCH, SESSION = sys.argv[1:]
MAIN = os.path.join(SCRATCH, "main.st")
ENDLESS = 2_000_000_000   # instructions of a scan


def line(text):
    """The line of main.st that holds this text."""
    with open(MAIN) as file:
        found = [number for number, content in enumerate(file, 1) if text in content]
    expect(len(found), 1, f"lines with {text!r}")
    return found[0]


def launch(client, breakpoints=(), **more):
    arguments = {"program": "main.st", "target": "target.xml", "cwd": SCRATCH, "realTime": False, **more}
    return client.begin([line(text) for text in breakpoints], MAIN, **arguments)


def breakpoints_in_order():
    client = Client(NORVANE, "/")
    set_ones = launch(client, ["place.x :=", "half := INT", "grid[n] :="], scans=2)
    expect([point["verified"] for point in set_ones], [True] * 3, "breakpoints")
    identifiers = [point["id"] for point in set_ones]
    scan = [("half := INT", 1, 2), ("half := INT", 1, 2), ("place.x :=", 0, 1), ("grid[n] :=", 2, 1),
            ("grid[n] :=", 2, 1), ("grid[n] :=", 2, 1), ("half := INT", 1, 2)]
    depths = [3, 2, 1, 1, 1, 1, 3]   # block calls Twice, so does main, so does spare
    for number in (1, 2):
        for (text, position, _), depth in zip(scan, depths):
            body = client.stopped("breakpoint")
            expect(body["hitBreakpointIds"], [identifiers[position]], "breakpoints that were hit")
            stack = client.ask("stackTrace", threadId=1)
            expect(stack["totalFrames"], depth, f"frames at {text}")
            expect(stack["stackFrames"][0]["line"], line(text), "line")
            expect(stack["stackFrames"][0]["source"], {"name": "main.st", "path": MAIN}, "source")
            client.ask("continue", threadId=1)
    expect(client.event("thread"), {"reason": "exited", "threadId": 1}, "thread")
    expect(client.event("exited"), {"exitCode": 0}, "exit")
    client.event("terminated")
    client.disconnect()


def breakpoints_move():
    client = Client(NORVANE, SCRATCH)
    client.ask("initialize", adapterID="norvane", linesStartAt1=False)
    client.ask("launch", program=["main.st"], target="target.xml", stopOnEntry=True)
    client.event("initialized")
    blank = line("WHILE level") - 1
    other = os.path.join(SCRATCH, "other.st")
    # Lines are counted from 0 here.
    body = client.ask("setBreakpoints", source={"path": MAIN},
                      breakpoints=[{"line": blank - 1}, {"line": line("END_PROGRAM") - 1}, {"line": 100000}])
    expect([point["verified"] for point in body["breakpoints"]], [True, False, False], "verified")
    expect(body["breakpoints"][0]["line"], blank, "the line that it moved to")
    expect(body["breakpoints"][1]["message"], "no line with code follows", "message")
    expect(body["breakpoints"][1]["line"], line("END_PROGRAM") - 1, "a line that is kept")
    body = client.ask("setBreakpoints", source={"path": other}, breakpoints=[{"line": 3}])
    expect(body["breakpoints"][0]["verified"], False, "of another file")
    expect(body["breakpoints"][0]["message"], "this is no source of the program", "message")
    expect(client.ask("loadedSources")["sources"], [{"name": "main.st", "path": MAIN}], "sources")
    places = client.ask("breakpointLocations", source={"path": MAIN}, line=line("FOR n") - 1, endLine=line("END_FOR") - 1)
    expect([place["line"] for place in places["breakpoints"]],
           [line("FOR n") - 1, line("grid[n] :=") - 1, line("table[n] :=") - 1], "lines with code")
    expect(client.ask("setExceptionBreakpoints", filters=[]), {}, "exception breakpoints")
    client.ask("configurationDone")
    client.stopped("entry")
    expect(client.place(), (line("block(step") - 1, "PROGRAM main"), "the entry")
    expect(client.go("continue", "breakpoint")[0], blank, "the breakpoint")
    # A new set replaces the old one.
    client.ask("setBreakpoints", source={"path": MAIN}, breakpoints=[{"line": line("kept :=") - 1}])
    expect(client.go("continue", "breakpoint")[0], line("kept :=") - 1, "the other breakpoint")
    expect(client.go("continue", "breakpoint")[0], line("kept :=") - 1, "once in a scan, with two statements there")
    expect(client.value("kept"), "1", "kept in front of its line in the second scan")
    client.disconnect()


def stepping():
    client = Client(NORVANE, SCRATCH)
    launch(client, stopOnEntry=True)
    client.stopped("entry")
    main, block, twice = "PROGRAM main", "FUNCTION_BLOCK Counter", "FUNCTION Twice"
    expect(client.place(), (line("block(step"), main), "entry")
    expect(client.go("stepIn", "step"), (line("count := count"), block), "into the block")
    expect(client.go("stepIn", "step"), (line("half := INT"), twice), "into the function")
    stack = client.ask("stackTrace", threadId=1)["stackFrames"]
    expect([(frame["line"], frame["name"]) for frame in stack],
           [(line("half := INT"), twice), (line("count := count"), block), (line("block(step"), main)], "call chain")
    part = client.ask("stackTrace", threadId=1, startFrame=1, levels=1)
    expect([frame["id"] for frame in part["stackFrames"]], [stack[1]["id"]], "a part of the call chain")
    expect(part["totalFrames"], 3, "frames")
    expect(client.go("next", "step"), (line("Twice := half"), twice), "over a line")
    expect(client.value("half"), "10", "half")
    expect(client.go("stepOut", "step"), (line("count := count"), block), "out of the function")
    expect(client.value("count"), "0", "count, which is stored behind the call")
    expect(client.go("next", "step"), (line("last.x := step"), block), "to the next line")
    expect(client.value("count"), "20", "count")
    # Nothing is left of the calling statement.
    expect(client.go("next", "step"), (line("total := total + Twice"), main), "over the end of the block")
    expect(client.go("next", "step"), (line("IF total > 1000"), main), "over a function")
    expect(client.value("total"), "6", "total")
    expect(client.go("next", "step"), (line("place.x :="), main), "neither branch")
    expect(client.go("next", "step"), (line("FOR n"), main), "to the loop")
    for _ in range(3):
        expect(client.go("next", "step"), (line("grid[n] :="), main), "into the loop")
        expect(client.go("next", "step"), (line("table[n] :="), main), "on in the loop")
    expect(client.go("next", "step"), (line("spare(step"), main), "behind the loop")
    expect(client.go("next", "step"), (line("WHILE level"), main), "over a block")
    expect(client.go("next", "step"), (line("kept :="), main), "past a loop that does not run")
    expect(client.value("kept"), "0", "kept")
    expect(client.go("next", "step"), (line("block(step"), main), "from scan to scan")
    expect(client.value("kept"), "1", "kept")
    expect(client.go("stepOut", "step"), (line("block(step"), main), "out of a program: to the next scan")
    expect(client.value("kept"), "2", "kept")
    client.disconnect()


def pause_of_an_endless_run():
    client = Client(NORVANE, SCRATCH)
    launch(client)
    for word in ("stackTrace", "scopes", "variables", "next", "continue", "setVariable", "evaluate"):
        expect(client.refused(word, threadId=1), f"{word} is not possible while the program runs", "reason")
    expect(client.ask("threads"), {"threads": [{"id": 1, "name": "scans"}]}, "threads")
    client.ask("pause", threadId=1)
    client.stopped("pause")
    first = int(client.value("kept"))
    client.ask("continue", threadId=1)
    time.sleep(0.2)
    client.ask("pause", threadId=1)
    client.stopped("pause")
    if int(client.value("kept")) <= first:
        raise Failure("no scan has run in between")
    client.disconnect()


def pause_of_an_endless_loop():
    client = Client(NORVANE, SCRATCH)
    launch(client, set={"level": 77}, maxInstructions=ENDLESS)
    # Breakpoints are taken while the program runs.
    client.ask("setBreakpoints", source={"path": MAIN}, breakpoints=[{"line": line("total := total + 1;")}])
    client.stopped("breakpoint")
    client.ask("setBreakpoints", source={"path": MAIN}, breakpoints=[])
    client.ask("continue", threadId=1)
    client.ask("pause", threadId=1)
    client.stopped("pause")
    expect(client.place()[0] in (line("WHILE level"), line("total := total + 1;")), True, "inside of the loop")
    # The loop ends when the variable does.
    client.ask("setExpression", expression="level", value="1", frameId=1)
    expect(client.go("stepOut", "step"), (line("block(step"), "PROGRAM main"), "the next scan")
    client.disconnect()


def variables():
    client = Client(NORVANE, SCRATCH)
    launch(client, ["kept :=", "last.x := step"], set=["button=TRUE"])
    client.stopped("breakpoint")
    scopes = client.scopes()
    instance = client.named(scopes["Instance"])
    expect({name: child["value"] for name, child in instance.items()},
           {"step": "10", "count": "20", "last": "tPoint", "marks": "INT[1..4]"}, "the instance")
    expect(instance["count"]["type"], "DINT", "type")
    last = client.named(instance["last"]["variablesReference"])
    expect(sorted(last), ["on", "x", "y"], "members of a member")
    expect(last["x"]["evaluateName"], "last.x", "a name to evaluate")
    expect(instance["marks"]["indexedVariables"], 4, "elements")
    expect([child["name"] for child in client.children(instance["marks"]["variablesReference"])],
           ["[1]", "[2]", "[3]", "[4]"], "elements")

    client.ask("continue", threadId=1)
    client.stopped("breakpoint")     # of spare
    expect(client.refused("variables", variablesReference=scopes["Instance"] + 1000),
           "variables: there is no such reference", "a reference of nothing")
    client.ask("continue", threadId=1)
    client.stopped("breakpoint")
    expect(client.place()[0], line("kept :="), "line")
    scopes = client.scopes()
    expect(sorted(scopes), ["Globals", "Inputs", "Locals", "Memory", "Outputs", "Programs", "Retained"], "scopes")
    local = client.named(scopes["Locals"])
    expect(local["n"]["value"], "4", "the variable of the loop behind it")
    expect(client.named(local["place"]["variablesReference"])["x"]["value"], "10", "part of a structure")
    block = client.named(local["block"]["variablesReference"])
    expect(block["count"]["value"], "20", "member of an instance")
    expect(block["last"]["evaluateName"], "block.last", "a name to evaluate")
    table = client.children(local["table"]["variablesReference"])
    expect([(child["name"], child["value"]) for child in table],
           [("[0]", "11"), ("[1]", "22"), ("[2]", "33"), ("[3]", "0"), ("[4]", "0")], "elements of a program's own")

    found = client.named(scopes["Globals"])
    expect(found["grid"]["indexedVariables"], 1500, "elements")
    expect(found["grid"]["type"], "INT[1..1500]", "type")
    grid = found["grid"]["variablesReference"]
    page = client.children(grid, filter="indexed", start=1, count=3)
    expect([(child["name"], child["value"]) for child in page], [("[2]", "2"), ("[3]", "3"), ("[4]", "0")], "a page")
    expect([child["name"] for child in client.children(grid, start=1498, count=100)], ["[1499]", "[1500]"], "the last")
    expect(client.children(grid, start=1500, count=1), [], "behind the last")
    expect(len(client.children(grid)), 1500, "all")
    pairs = client.named(found["pairs"]["variablesReference"])
    expect(list(pairs), ["[0,1]", "[0,2]", "[1,1]", "[1,2]"], "elements of two dimensions")
    point = client.named(pairs["[1,2]"]["variablesReference"])
    expect(point["y"]["evaluateName"], "pairs[1,2].y", "a name to evaluate")
    expect(found["ratio"]["value"], "0.5", "a real")
    expect(client.named(scopes["Retained"])["kept"]["value"], "0", "retained")
    expect(client.named(scopes["Outputs"])["lamp"]["value"], "TRUE", "output")
    inputs = client.named(scopes["Inputs"])
    expect(inputs["button"]["value"], "TRUE", "input")
    expect(inputs["%IB"]["indexedVariables"], 100, "bytes of the area")
    first = client.children(inputs["%IB"]["variablesReference"], start=0, count=1)
    expect([(child["name"], child["value"]) for child in first], [("%IB0", "8")], "bit 3 of the first byte")
    programs = client.named(scopes["Programs"])
    expect(client.named(programs["main"]["variablesReference"])["n"]["evaluateName"], "main.n", "a name to evaluate")
    client.disconnect()


def evaluate():
    client = Client(NORVANE, SCRATCH)
    launch(client, ["Twice := half"])
    client.stopped("breakpoint")     # main - block - Twice
    expect(client.value("half"), "10", "of the function")
    expect(client.value("VALUE"), "10", "in capitals")
    expect(client.value("count", frame=2), "0", "of the block's frame")
    expect(client.value("last.x", frame=2), "0", "of the block's frame")
    expect(client.value("block.step", frame=3), "10", "of the program's frame")
    expect(client.value("main.block.step"), "10", "from everywhere")
    for name, value in [("corner.y", "-4"), ("pairs[1,2].on", "FALSE"), ("%QX0.0", "FALSE"), (" ratio ", "0.5")]:
        expect(client.value(name), value, name)
    corner = client.ask("evaluate", expression="corner", frameId=1, context="hover")
    expect((corner["result"], corner["type"], corner["namedVariables"]), ("tPoint", "tPoint", 3), "a structure")
    expect(client.named(corner["variablesReference"])["x"]["value"], "3", "what lies in it")
    for name, reason in [("nobody", "nobody: there is no such global variable"),
                         ("grid[1501]", "grid[1501]: the bounds are 1..1500"),
                         ("corner.z", "corner: has no member z"), ("level.x", "level: has no members"),
                         ("level +", "level +: there is no such global variable"),
                         ("", ": there is no such global variable")]:
        expect(client.refused("evaluate", expression=name, frameId=1), reason, name)
    expect(client.refused("evaluate", expression="level", frameId=17),
           "evaluate: expected an expression, and a frame that exists", "a frame that there isn't")
    body = client.ask("evaluate", expression="corner.x := 16#7F", frameId=1, context="repl")
    expect(body["result"], "127", "set at the prompt")
    expect(client.value("corner.x"), "127", "what was set")
    client.disconnect()


def set_variable():
    client = Client(NORVANE, SCRATCH)
    launch(client, ["IF total > 1000", "place.x :="], stopOnEntry=True)
    client.stopped("entry")
    expect(client.go("continue", "breakpoint")[0], line("IF total > 1000"), "line")
    globals_, inputs = client.scopes()["Globals"], client.scopes()["Inputs"]
    body = client.ask("setVariable", variablesReference=globals_, name="total", value="1001")
    expect((body["value"], body["type"]), ("1001", "DINT"), "the new value")
    expect(client.go("next", "step")[0], line("level := 0;"), "the branch that is taken now")
    expect(client.go("continue", "breakpoint")[0], line("place.x :="), "line")
    expect(client.value("level"), "0", "level")
    globals_, inputs = client.scopes()["Globals"], client.scopes()["Inputs"]
    for name, value, reason in [
            ("small", "128", "small: 128 does not fit into 8 bits with sign"),
            ("small", "-129", "small: -129 does not fit into 8 bits with sign"),
            ("small", "1.5", 'small: "1.5" is no integer'),
            ("ratio", "abc", 'ratio: "abc" is no number'),
            ("corner", "1", "corner: is no single value"),
            ("nobody", "1", "nobody: there is no such global variable")]:
        expect(client.refused("setVariable", variablesReference=globals_, name=name, value=value), reason, name)
    expect(client.refused("setVariable", variablesReference=inputs, name="button", value="2"),
           'button: "2" is neither TRUE nor FALSE, 1 nor 0', "a BOOL")
    expect(client.value("small"), "0", "what no value has fitted")
    expect(client.ask("setVariable", variablesReference=globals_, name="small", value="-128")["value"], "-128", "lowest")
    local = client.named(client.scopes()["Locals"])
    expect(client.refused("setVariable", variablesReference=client.scopes()["Locals"], name="place", value="1")[:6],
           "place:", "a structure")
    client.ask("setVariable", variablesReference=local["place"]["variablesReference"], name="x", value="5")
    expect(client.value("place.x"), "5", "part of a structure")
    grid = client.named(globals_)["grid"]["variablesReference"]
    client.ask("setVariable", variablesReference=grid, name="[2]", value="40")
    client.ask("setVariable", variablesReference=globals_, name="total", value="0")
    client.ask("setVariable", variablesReference=inputs, name="button", value="TRUE")
    client.ask("nextScan")
    client.stopped("step")
    expect(client.value("grid[2]"), "42", "an element that the program has counted on from")
    expect(client.go("continue", "breakpoint")[0], line("IF total > 1000"), "line")
    expect(client.go("next", "step")[0], line("lamp := TRUE"), "the branch of the input")
    client.disconnect()


def scan_by_scan():
    client = Client(NORVANE, SCRATCH)
    launch(client, ["spare(step"], scans=4, force={"level": 2})
    client.stopped("breakpoint")
    client.ask("nextScan")
    expect(client.event("continued"), {"threadId": 1, "allThreadsContinued": True}, "continued")
    expect(client.stopped("step")["description"], "in front of scan 2", "description")
    frames = client.ask("stackTrace", threadId=1)["stackFrames"]
    expect([(frame["name"], frame["line"]) for frame in frames], [("in front of scan 2", line("block(step"))], "stack")
    expect(client.value("kept"), "1", "whole scans")
    expect(client.value("main.block.count"), "4", "forced before the scan")
    client.ask("setBreakpoints", source={"path": MAIN}, breakpoints=[])
    client.ask("nextScan")
    expect(client.stopped("step")["description"], "in front of scan 3", "description")
    expect(client.value("kept"), "2", "whole scans")
    expect(client.go("next", "step"), (line("block(step"), "PROGRAM main"), "a step into the scan")
    client.ask("nextScan")
    expect(client.stopped("step")["description"], "in front of scan 4", "description")
    expect(client.value("kept"), "3", "whole scans")
    client.ask("nextScan")                      # the last one
    expect(client.event("exited"), {"exitCode": 0}, "exit")
    client.event("terminated")
    expect(client.refused("nextScan"), "nextScan is not possible behind the end of the program", "reason")
    client.disconnect()


def scan_while_running():
    client = Client(NORVANE, SCRATCH)
    launch(client, realTime=True, scanTime="50ms", tasks={"main": "100ms"})
    client.ask("nextScan")
    description = client.stopped("step")["description"]
    number = int(description.split()[-1])
    client.ask("nextScan")
    expect(client.stopped("step")["description"], f"in front of scan {number + 1}", "description")
    # Of two scans one has main in it: the first, the third and so on.
    expect(client.value("kept"), str((number + 1) // 2), "scans of main")
    begin = time.monotonic()
    client.ask("setBreakpoints", source={"path": MAIN}, breakpoints=[{"line": line("kept :=")}])
    for _ in range(3):
        client.ask("continue", threadId=1)
        client.stopped("breakpoint")
    if time.monotonic() - begin < 0.15:
        raise Failure("the scans do not keep their time")
    client.disconnect()


def trap():
    client = Client(NORVANE, SCRATCH)
    launch(client, set={"divisor": 0})
    stop = client.stopped("exception")
    expect(stop["text"], "division by zero", "text")
    expect(client.place(), (line("place.x :="), "PROGRAM main"), "place")
    expect(client.value("total"), "6", "a global")
    expect(client.value("block.count"), "20", "a variable of the program")
    info = client.ask("exceptionInfo", threadId=1)
    expect((info["exceptionId"], info["description"], info["breakMode"]),
           ("DivisionByZero", "division by zero", "always"), "exception")
    expect(f"main.st({line('place.x :=')}): PROGRAM main: trap: division by zero" in info["details"]["stackTrace"], True,
           "the report")
    client.ask("continue", threadId=1)
    expect(client.event("exited"), {"exitCode": 1}, "exit")
    client.event("terminated")
    client.disconnect()


def trap_in_a_function():
    client = Client(NORVANE, SCRATCH)
    with open(MAIN) as file:
        text = file.read()
    with open(MAIN, "w") as file:
        file.write(text.replace("Twice := half + half;", "Twice := half / (half - 10);"))
    launch(client, [])
    client.stopped("exception")
    frames = client.ask("stackTrace", threadId=1)["stackFrames"]
    expect([frame["name"] for frame in frames], ["FUNCTION Twice", "FUNCTION_BLOCK Counter", "PROGRAM main"], "stack")
    expect(client.value("half"), "10", "a variable of the function, which is kept")
    expect(client.value("step", frame=2), "10", "the block's")
    client.ask("nextScan")
    expect(client.event("exited"), {"exitCode": 1}, "exit")
    client.disconnect()


def disconnect_in_the_middle():
    for breakpoints, runs in ((["count := count"], False), ([], True)):
        client = Client(NORVANE, SCRATCH)
        launch(client, breakpoints, set={"level": 77 if runs else 1}, maxInstructions=ENDLESS)
        if not runs:
            client.stopped("breakpoint")
        client.disconnect()
    # A client that is gone without a word.
    client = Client(NORVANE, SCRATCH)
    launch(client, set={"level": 77}, maxInstructions=ENDLESS)
    client.process.stdin.close()
    client.process.stdin = None
    client.ends(0)
    client = Client(NORVANE, SCRATCH)
    launch(client, ["count := count"])
    client.stopped("breakpoint")
    client.ask("terminate")
    expect(client.event("exited"), {"exitCode": 0}, "exit")
    client.event("terminated")
    client.disconnect()


def launch_arguments():
    client = Client(NORVANE, "/")
    client.ask("initialize", adapterID="norvane")
    for arguments, reason in [
            ({}, "launch: program: expected the name of a listing (.asm), or of sources"),
            ({"program": 7}, "launch: program: cannot be used: 7"),
            ({"program": "main.st", "scans": [1, [2]]}, "launch: scans: cannot be used: [1,[2]]"),
            ({"program": "main.st", "cwd": "/nowhere/at/all"}, 'launch: cwd: cannot be used: "/nowhere/at/all"'),
            ({"program": "main.st", "strict": "yes"}, 'launch: strict: cannot be used: "yes"'),
            ({"program": "main.st", "cwd": SCRATCH}, "sources need a target description (-i)"),
            ({"program": "main.st", "target": "target.xml", "set": {"nobody": 1}},
             "nobody: there is no such global variable"),
            ({"program": "main.st", "target": "target.xml", "set": {"level": 40000}},
             "level: 40000 does not fit into 16 bits with sign"),
            ({"program": "main.st", "target": "target.xml", "tasks": {"main": "often"}},
             "--task main=often: expected PROGRAM=TIME, such as main=10ms")]:
        expect(client.refused("launch", **arguments), reason, str(arguments))
    if "--frames" not in client.refused("launch", program="main.st", frames="odd"):
        raise Failure("the switch is not named")
    if "do not compile" not in client.refused("launch", program="target.xml", target="target.xml"):
        raise Failure("the compiler's errors are not told")
    client.ask("launch", program="main.st", target="target.xml", compilerOptions=["-bs0"], frames="noise", scans=3,
               scanTime="1ms", retain="kept.retain", sacns=1, type="norvane", request="launch", name="x", __id=1)
    expect(client.event("output")["output"], "launch: there is no argument sacns\n", "what is no argument")
    client.event("initialized")
    expect(client.events, [], "no other complaints")
    client.ask("configurationDone")
    client.event("terminated")
    client.disconnect()
    # What was retained comes back; the listing does as well as the sources.
    os.chdir(SCRATCH)
    compiler = os.path.join(os.path.dirname(NORVANE), "compiler")
    expect(os.system(f"'{compiler}' main.st -i target.xml -bs0 > printed 2>&1"), 0, "the compiler")
    client = Client(NORVANE, "/")
    client.begin([line("kept :=")], MAIN, program="main.asm", cwd=SCRATCH, target="target.xml", retain="kept.retain")
    client.stopped("breakpoint")
    expect(client.value("kept"), "3", "what was retained")
    expect(client.place(), (line("kept :="), "PROGRAM main"), "place")
    client.disconnect()


def wrong_state():
    client = Client(NORVANE, SCRATCH)
    expect(client.refused("launch", program="main.st"), "launch is not possible in front of initialize", "reason")
    expect(client.refused("nonsense"), "unknown command: nonsense", "reason")
    client.ask("initialize")
    expect(client.refused("initialize"), "initialize is not possible in front of launch", "reason")
    for word in ("setBreakpoints", "configurationDone", "threads", "continue", "stackTrace", "terminate"):
        expect(client.refused(word), f"{word} is not possible in front of launch", "reason")
    client.ask("launch", program="main.st", target="target.xml", stopOnEntry=True)
    expect(client.refused("continue"), "continue is not possible in front of configurationDone", "reason")
    expect(client.refused("launch", program="x"), "launch is not possible in front of configurationDone", "reason")
    expect(client.refused("setBreakpoints", breakpoints=[{"line": "3"}]), "setBreakpoints: a breakpoint has no line",
           "reason")
    expect(client.ask("setBreakpoints"), {"breakpoints": []}, "of nothing")
    client.ask("configurationDone")
    client.stopped("entry")
    expect(client.refused("configurationDone"), "configurationDone is not possible while the program is stopped", "reason")
    expect(client.refused("exceptionInfo"), "exceptionInfo: no trap was drawn", "reason")
    # Members that are missing, of the wrong type or out of all bounds.
    huge = 10 ** 30
    for arguments in ({}, {"variablesReference": "1"}, {"variablesReference": -1}, {"variablesReference": 0},
                      {"variablesReference": huge}, {"variablesReference": 2 ** 63}, {"variablesReference": 1.5}):
        expect(client.refused("variables", **arguments), "variables: there is no such reference", str(arguments))
    expect(client.refused("scopes", frameId=2 ** 40), "scopes: there is no such frame", "frame")
    expect(client.refused("setVariable", variablesReference=1, name=1, value=2),
           "setVariable: expected variablesReference, name and value", "reason")
    expect(client.refused("evaluate"), "evaluate: expected an expression, and a frame that exists", "reason")
    stack = client.ask("stackTrace", threadId=1, startFrame=2 ** 62, levels=2 ** 62)
    expect(stack["stackFrames"], [], "frames from far away")
    reference = client.scopes()["Globals"]
    expect(client.children(reference, start=2 ** 62, count=2 ** 62), [], "children from far away")
    points = client.ask("setBreakpoints", source={"path": MAIN},
                        breakpoints=[{"line": 2 ** 62}, {"line": -(2 ** 62)}])["breakpoints"]
    expect([point["verified"] for point in points], [False, True], "lines from far away")
    client.disconnect()


def malformed_messages():
    client = Client(NORVANE, SCRATCH)
    deep = "[" * 1000000
    texts = ["", "{", "nonsense", "[1,2]", "null", '{"seq":1}', '{"seq":1,"type":"event","command":"x"}',
             b'{"seq":1,"type":"request","command":"\xff"}', deep, '{"a":' * 100000]
    for text in texts:
        client.send_text(text)
        message = client.receive()
        expect((message["type"], message["success"]), ("response", False), f"answer to {text[:40]!r}")
    # The session goes on behind all of them.
    client.send_bytes(b"X-Other: 1\r\ncontent-length:  56\r\n\r\n" +
                      b'{"seq":77,"type":"request","command":"initialize"}'.ljust(56))
    message = client.receive()
    expect((message["request_seq"], message["success"]), (77, True), "initialize")
    # Two in one piece, and one byte by byte.
    request = '{"seq":%d,"type":"request","command":"x"}'
    both = b"".join(b"Content-Length: %d\r\n\r\n%b" % (len(request % n), (request % n).encode()) for n in (78, 79))
    client.send_bytes(both)
    for byte in both:
        client.send_bytes(bytes([byte]))
    expect([client.receive()["request_seq"] for _ in range(4)], [78, 79, 78, 79], "requests")
    client.sequence = 100
    client.disconnect()


def broken_streams():
    for data, complaint in [
            (b"Content-Length: abc\r\n\r\n{}", "Content-Length is no number"),
            (b"Content-Length: -5\r\n\r\n{}", "Content-Length is no number"),
            (b"Content-Length: 5x\r\n\r\n{}", "Content-Length is no number"),
            (b"Content-Length:\r\n\r\n{}", "Content-Length is no number"),
            (b"Content-Length: 99999999999\r\n\r\n{}", "a message of more than 16777216 bytes"),
            (b"Content-Length: 99999999999999999999999999\r\n\r\n{}", "a message of more than 16777216 bytes"),
            (b"\r\n\r\n{}", "a message without Content-Length"),
            (b"Other: 1\r\n\r\n{}", "a message without Content-Length"),
            (b"nonsense\r\n\r\n", "a line of a message's head has no colon"),
            (b"x" * 100000, "a message's head does not end"),
            (b"Content-Length: 100\r\n\r\n{}", "the input ends in the middle of a message"),
            (b"Content-Length: 16777216\r\n\r\n" + b" " * 100000, "the input ends in the middle of a message"),
            (b"Content-Length: 5\r\n\r\n", "the input ends in the middle of a message"),
            (b"Content-Len", "the input ends in the middle of a message")]:
        client = Client(NORVANE, SCRATCH)
        try:
            client.send_bytes(data)
            client.process.stdin.close()
        except BrokenPipeError:
            pass
        client.process.stdin = None
        client.ends(2, complaint)
    client = Client(NORVANE, SCRATCH)
    client.process.stdin.close()
    client.process.stdin = None
    client.ends(0)


def output_of_the_program():
    # What the compiler notes; with this option the retained variable lies where no retain area is.
    client = Client(NORVANE, SCRATCH)
    client.ask("initialize")
    client.ask("launch", program="main.st", target="target.xml", compilerOptions="-o1")
    expect("main.st(23,5) : note N7" in client.event("output")["output"], True, "a note of the compiler")
    client.ask("disconnect")
    client.ends(0)
    client = Client(NORVANE, SCRATCH)
    launch(client, ["kept :="], stopOnEntry=True)
    client.stopped("entry")
    # Requests may come without waiting for answers; they are answered in their order.
    numbers = [client.send("threads") for _ in range(200)]
    for number in numbers:
        client.receive_response(number, "threads")
    client.ask("continue", threadId=1)
    client.stopped("breakpoint")
    client.ask("terminate")
    expect(client.event("output")["output"], "1 scan(s) run\n", "what is printed at the end")
    client.disconnect()


SESSIONS = [breakpoints_in_order, breakpoints_move, stepping, pause_of_an_endless_run, pause_of_an_endless_loop,
            variables, evaluate, set_variable, scan_by_scan, scan_while_running, trap, trap_in_a_function,
            disconnect_in_the_middle, launch_arguments, wrong_state, malformed_messages, broken_streams,
            output_of_the_program]


def main():
    shutil.rmtree(SCRATCH, ignore_errors=True)
    os.makedirs(SCRATCH)
    shutil.copy(os.path.join(SOURCES, "tests/dap/main.st"), MAIN)
    shutil.copy(os.path.join(SOURCES, "examples/target.xml"), SCRATCH)
    wanted = [session for session in SESSIONS if session.__name__ == SESSION]
    expect(len(wanted), 1, f"sessions called {SESSION}")
    wanted[0]()
    print(f"{SESSION}: passed")


try:
    main()
except Failure as failure:
    print(f"{SESSION}: {failure}")
    sys.exit(1)
