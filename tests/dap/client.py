"""A client of the Debug Adapter Protocol that trusts nothing: whatever the adapter sends is checked for its form."""

import json
import os
import select
import subprocess
import time

PATIENCE = 60  # seconds, for a machine under load and a program with sanitizers


class Failure(Exception):
    pass


def expect(found, wanted, what):
    if found != wanted:
        raise Failure(f"{what}: expected {wanted!r}, found {found!r}")


class Client:
    def __init__(self, norvane, folder):
        self.process = subprocess.Popen(
            [norvane, "debug"], cwd=folder, stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        self.sequence = 0
        self.buffer = b""
        self.events = []          # that nobody has taken yet
        self.last_received = 0    # number of the last message

    # ---- Bytes

    def send_bytes(self, data):
        self.process.stdin.write(data)
        self.process.stdin.flush()

    def send_text(self, text):
        data = text.encode() if isinstance(text, str) else text
        self.send_bytes(b"Content-Length: %d\r\n\r\n" % len(data) + data)

    def fill(self):
        deadline = time.monotonic() + PATIENCE
        while not select.select([self.process.stdout], [], [], 0.2)[0]:
            if time.monotonic() > deadline:
                raise Failure("the adapter is silent")
        data = os.read(self.process.stdout.fileno(), 65536)
        if not data:
            raise Failure("the adapter has closed its output: " + self.process.stderr.read().decode())
        self.buffer += data

    def receive(self):
        while b"\r\n\r\n" not in self.buffer:
            self.fill()
        head, self.buffer = self.buffer.split(b"\r\n\r\n", 1)
        if not head.startswith(b"Content-Length: ") or not head[16:].isdigit():
            raise Failure(f"a head that is none: {head!r}")
        length = int(head[16:])
        while len(self.buffer) < length:
            self.fill()
        message = json.loads(self.buffer[:length].decode())
        self.buffer = self.buffer[length:]
        self.last_received += 1
        expect(message["seq"], self.last_received, "number of a message")
        return message

    # ---- Requests and events

    def send(self, command, arguments=None):
        self.sequence += 1
        request = {"seq": self.sequence, "type": "request", "command": command}
        if arguments is not None:
            request["arguments"] = arguments
        self.send_text(json.dumps(request))
        return self.sequence

    def receive_response(self, number, command):
        while True:
            message = self.receive()
            if message["type"] == "event":
                self.events.append(message)
                continue
            expect(message["type"], "response", "type of a message")
            expect(message["request_seq"], number, "request of a response")
            expect(message["command"], command, "command of a response")
            return message

    def ask(self, command, **arguments):
        """The body of a response that must tell of success."""
        response = self.receive_response(self.send(command, arguments), command)
        if not response["success"]:
            raise Failure(f"{command}: {response['message']}")
        return response.get("body", {})

    def refused(self, command, **arguments):
        """The reason of a response that must tell of a failure."""
        response = self.receive_response(self.send(command, arguments), command)
        expect(response["success"], False, f"success of {command}")
        expect(response["body"]["error"]["variables"]["reason"], response["message"], "the two reasons")
        return response["message"]

    def event(self, name):
        """The next event of that name; those in front of it are passed over."""
        while True:
            while self.events:
                message = self.events.pop(0)
                if message["event"] == name:
                    return message["body"]
            message = self.receive()
            expect(message["type"], "event", "type of a message")
            self.events.append(message)

    # ---- What sessions are made of

    def begin(self, breakpoints=(), source=None, **launch):
        """From the first request to configurationDone."""
        self.ask("initialize", adapterID="norvane", linesStartAt1=True, columnsStartAt1=True)
        self.ask("launch", **launch)
        self.event("initialized")
        result = self.ask("setBreakpoints", source={"path": source}, breakpoints=[{"line": n} for n in breakpoints])
        self.ask("configurationDone")
        expect(self.event("thread"), {"reason": "started", "threadId": 1}, "the thread")
        return result["breakpoints"]

    def stopped(self, reason):
        body = self.event("stopped")
        expect(body["reason"], reason, "reason of a stop")
        expect(body["threadId"], 1, "thread of a stop")
        expect(body["allThreadsStopped"], True, "threads of a stop")
        return body

    def place(self):
        """Line and name of the innermost frame."""
        frame = self.ask("stackTrace", threadId=1)["stackFrames"][0]
        return frame["line"], frame["name"]

    def go(self, command, reason, **arguments):
        self.ask(command, threadId=1, **arguments)
        self.stopped(reason)
        return self.place()

    def value(self, name, frame=1):
        return self.ask("evaluate", expression=name, frameId=frame)["result"]

    def scopes(self, frame=1):
        return {scope["name"]: scope["variablesReference"] for scope in self.ask("scopes", frameId=frame)["scopes"]}

    def children(self, reference, **paging):
        return self.ask("variables", variablesReference=reference, **paging)["variables"]

    def named(self, reference):
        return {child["name"]: child for child in self.children(reference)}

    # ---- The end

    def ends(self, status, complaint=""):
        """The adapter has ended, with nothing left on its output and that text on standard error."""
        try:
            rest, errors = self.process.communicate(timeout=PATIENCE)
        except subprocess.TimeoutExpired:
            self.process.kill()
            raise Failure("the adapter does not end")
        expect(self.buffer + rest, b"", "what is left on standard output")
        expect(self.process.returncode, status, f"exit status (standard error: {errors.decode()})")
        if complaint:
            if complaint not in errors.decode():
                raise Failure(f"standard error has no {complaint!r}: {errors.decode()!r}")
        else:
            expect(errors.decode(), "", "standard error")

    def disconnect(self):
        self.ask("disconnect")
        self.ends(0)
