"use strict";
// Uses a report's page as a reader would, and writes what came of it, a line each: "ok ..." or "FAILED ...", and
// "value NAME NUMBER" for what the caller compares.
(async function () {
    const lines = [];
    const check = (text, holds) => lines.push((holds ? "ok " : "FAILED ") + text);
    const value = (name, number) => lines.push("value " + name + " " + number);
    const pause = () => new Promise((resolve) => setTimeout(resolve, 50));
    const one = (selector) => document.querySelector(selector);
    const all = (selector) => [...document.querySelectorAll(selector)];
    const texts = (selector) => all(selector).map((element) => element.textContent);

    check("the script ran to its end", document.documentElement.dataset.ready === "yes");
    check("nothing foreign is in the page", all("script[src], link, img, iframe, object, embed").length === 0);
    check("no program name runs", window.pwned === undefined);
    value("title " + one("h1").textContent, 0);

    // Sums
    for (const row of all("#memory tbody tr")) value("used " + row.dataset.area, row.children[2].textContent);
    const stack = one("#stacks p").textContent.match(/\d+/g);
    value("stacksize", stack[0]);
    value("deepest", stack[1]);
    value("nested", stack[2]);
    const signs = texts("#origin dd").join(" ").match(/global (\d+), retain (\d+), debug file (\d+)/);
    value("globalsign", signs[1]);
    value("retainsign", signs[2]);
    value("dbisign", signs[3]);
    const facts = JSON.parse(one("#facts").textContent);
    value("variables", facts.variables.filter((row) => row[1] === "").length);
    value("instructions", facts.pous.reduce((sum, row) => sum + row[4], 0));

    // Sorting
    const head = (section, title) => all("#" + section + " th button").find((button) => button.textContent === title);
    const column = (section, title) => {
        const index = all("#" + section + " thead th").findIndex((cell) => cell.textContent === title);
        return all("#" + section + " tbody tr").map((row) => row.children[index].textContent);
    };
    const isSorted = (values, before) => values.every((entry, i) => i === 0 || before(values[i - 1], entry));
    const uses = () => column("variables", "Uses").map(Number);
    head("variables", "Uses").click();
    check("a click sorts numbers, the greatest first", isSorted(uses(), (a, b) => a >= b) && uses().length > 1);
    check("the head says so", head("variables", "Uses").closest("th").getAttribute("aria-sort") === "descending");
    head("variables", "Uses").click();
    check("another click turns the order round", isSorted(uses(), (a, b) => a <= b));
    check("the head says that, too", head("variables", "Uses").closest("th").getAttribute("aria-sort") === "ascending");
    head("variables", "Name").click();
    check("names are sorted", isSorted(column("variables", "Name").map((name) => name.toLowerCase()), (a, b) => a <= b));
    check("one head at a time", all("#variables th[aria-sort=ascending], #variables th[aria-sort=descending]").length === 1);
    head("pous", "Instructions").click();
    check("POUs are sorted", isSorted(column("pous", "Instructions").map(Number), (a, b) => a >= b));

    // Filtering
    const filter = one("#variables-filter");
    const before = all("#variables tbody tr").length;
    const wanted = column("variables", "Name")[0].toLowerCase();
    filter.value = wanted;
    filter.dispatchEvent(new Event("input"));
    const found = all("#variables tbody tr");
    check("the filter finds " + wanted, found.length > 0 && found.length < before &&
        found.every((row) => row.textContent.toLowerCase().includes(wanted)));
    filter.value = "no such variable";
    filter.dispatchEvent(new Event("input"));
    check("what nothing has is not found", all("#variables tbody tr").length === 0);
    check("and it is said", one("#variables [role=status]").textContent.startsWith("0 of "));
    filter.value = "";
    filter.dispatchEvent(new Event("input"));
    check("an empty filter shows everything", all("#variables tbody tr").length === before);
    const choice = one("#variables-choice");
    choice.value = choice.options[1].value;
    choice.dispatchEvent(new Event("change"));
    const area = choice.options[1].textContent;
    check("the area " + area + " alone", column("variables", "Area").every((name) => name === area));

    // Maps
    check("there are maps", all("#maps details").length > 0 && all("#maps .block").length > 0);
    const map = one("#maps .map");
    map.focus();
    check("a map takes the focus", document.activeElement === map);
    map.dispatchEvent(new KeyboardEvent("keydown", {key: "ArrowRight", bubbles: true}));
    const first = one("#maps .told").textContent;
    map.dispatchEvent(new KeyboardEvent("keydown", {key: "ArrowRight", bubbles: true}));
    check("the arrow keys tell of one block after the other", first !== "" && one("#maps .told").textContent !== first &&
        all("#maps .current").length === 1);
    const overflowing = all("#maps .block").filter((block) => {
        const left = parseFloat(block.style.left);
        const width = parseFloat(block.style.width);
        return left < 0 || width <= 0 || left + width > 100.01;
    });
    check("each block lies within its row", overflowing.length === 0);

    // The call tree
    const root = all("#calls details").find((details) => details.querySelector("summary"));
    check("the tree is closed at first", root && !root.querySelector("ul"));
    if (root) {
        root.querySelector("summary").click();
        await pause();
        check("it opens a level", root.open && root.querySelectorAll("ul > li").length > 0);
        check("the level below stays closed", !root.querySelector("ul").querySelector("ul"));
    }

    check("nothing is wider than the window", document.documentElement.scrollWidth <= window.innerWidth);
    value("width", window.innerWidth);
    for (const fault of window.faults) lines.push("FAILED fault: " + fault);
    const result = document.createElement("pre");
    result.id = "result";
    result.textContent = "\n" + lines.join("\n") + "\nend\n";
    document.body.append(result);
})();
