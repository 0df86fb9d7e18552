"use strict";
// Draws the maps, the tables and the call tree of a report from the facts that the page carries. All text of the user
// becomes text nodes, never markup.
(function () {
    const facts = JSON.parse(document.getElementById("facts").textContent);
    const bitsOfByte = 8;

    // Rows of the facts by name. ORDER FACTS
    const variables = facts.variables.map((row, index) => ({
        index, name: row[0], owner: row[1], type: row[2], area: row[3], begin: row[4], end: row[5],
        isRetain: (row[6] & 1) !== 0, isConstant: (row[6] & 2) !== 0, isLocated: (row[6] & 4) !== 0,
        isFromCode: (row[6] & 8) !== 0, uses: row[7], at: row[8], overlaps: row[9], overlapping: row[10],
        fullName: row[1] ? row[1] + "." + row[0] : row[0]
    }));
    const pous = facts.pous.map((row) => ({
        name: row[0], kind: row[1], file: row[2], line: row[3], instructions: row[4], local: row[5], frame: row[6],
        depth: row[7], values: row[8], isUsed: row[9], callees: row[10], callers: row[11], deepest: row[12]
    }));

    function make(tag, attributes, ...children) {
        const element = document.createElement(tag);
        for (const name in attributes) element.setAttribute(name, attributes[name]);
        for (const child of children) element.append(child);
        return element;
    }

    function count(number, one, more) {
        return number + " " + (number === 1 ? one : more);
    }

    // ---- Words for variables

    function isBits(variable) {
        return (variable.end - variable.begin) % bitsOfByte !== 0;
    }

    function placeOf(variable) {
        if (variable.area < 0) return "";
        const byte = Math.floor(variable.begin / bitsOfByte);
        return byte + (isBits(variable) ? "." + variable.begin % bitsOfByte : "");
    }

    function sizeOf(variable) {
        if (variable.area < 0) return "";
        const bits = variable.end - variable.begin;
        const text = isBits(variable) ? count(bits, "bit", "bits") : count(bits / bitsOfByte, "byte", "bytes");
        return variable.isFromCode && !variable.type ? "at least " + text : text;
    }

    function remarksOf(variable) {
        const remarks = [];
        if (variable.isRetain) remarks.push("retained");
        if (variable.isConstant) remarks.push(variable.area < 0 ? "constant, no place" : "constant");
        if (variable.at) remarks.push("AT " + variable.at);
        else if (variable.isLocated) remarks.push("AT");
        if (variable.overlaps > 0) {
            const names = variable.overlapping.map((other) => variables[other].fullName).join(", ");
            const rest = variable.overlaps - variable.overlapping.length;
            remarks.push("overlaps " + names + (rest > 0 ? " and " + rest + " more" : ""));
        }
        return remarks.join("; ");
    }

    function tell(variable) {
        const type = variable.type ? " : " + variable.type : "";
        const remarks = remarksOf(variable);
        return variable.fullName + type + ", " + sizeOf(variable) + " at " + placeOf(variable) +
            (remarks ? ", " + remarks : "");
    }

    // ---- Tables that sort and filter

    // columns: title, value to sort by, text to show (the value without it), isNumber, className
    function addTable(section, rows, columns, searched, choices) {
        const firstShown = 200;
        let shown = firstShown;
        let order = -1;
        let isRising = true;

        const filter = make("input", {type: "search", id: section.id + "-filter", autocomplete: "off"});
        const tools = make("div", {class: "tools"},
            make("label", {for: filter.id}, "Find"), filter);
        const choice = make("select", {id: section.id + "-choice"});
        if (choices) {
            choice.append(make("option", {value: ""}, choices.all));
            for (const entry of choices.entries) choice.append(make("option", {value: entry.value}, entry.text));
            tools.append(make("label", {for: choice.id}, choices.title), choice);
        }
        const told = make("p", {class: "hint", role: "status"});
        const heads = columns.map((column, index) => {
            const button = make("button", {type: "button"}, column.title);
            button.addEventListener("click", () => {
                isRising = order === index ? !isRising : !column.isNumber;
                order = index;
                draw();
            });
            return make("th", {scope: "col", class: column.isNumber ? "n" : "", "aria-sort": "none"}, button);
        });
        const body = make("tbody", {});
        const more = make("button", {type: "button", class: "more"});
        const all = make("button", {type: "button", class: "more"});
        more.addEventListener("click", () => { shown += 1000; draw(); });
        all.addEventListener("click", () => { shown = rows.length; draw(); });
        filter.addEventListener("input", () => { shown = firstShown; draw(); });
        choice.addEventListener("change", () => { shown = firstShown; draw(); });

        function compare(left, right) {
            const value = columns[order].value;
            const a = value(left);
            const b = value(right);
            if (a === b) return 0;
            return (a < b ? -1 : 1) * (isRising ? 1 : -1);
        }

        function makeRow(row) {
            const line = make("tr", {});
            columns.forEach((column, index) => {
                const text = String((column.text || column.value)(row));
                const attributes = {class: (column.isNumber ? "n " : "") + (column.className || "")};
                if (index === 0) attributes.scope = "row";
                line.append(make(index === 0 ? "th" : "td", attributes, text));
            });
            return line;
        }

        function draw() {
            const words = filter.value.toLowerCase().split(/\s+/).filter((word) => word);
            let found = rows.filter((row) => {
                const text = searched(row);
                return words.every((word) => text.includes(word)) && (!choice.value || choices.has(row, choice.value));
            });
            if (order >= 0) found = found.slice().sort(compare);
            heads.forEach((head, index) => {
                const state = index !== order ? "none" : isRising ? "ascending" : "descending";
                head.setAttribute("aria-sort", state);
            });
            const drawn = document.createDocumentFragment();
            for (const row of found.slice(0, shown)) drawn.append(makeRow(row));
            body.replaceChildren(drawn);
            const rest = found.length - Math.min(shown, found.length);
            told.textContent = found.length + " of " + rows.length + (rest > 0 ? ", the first " + shown + " are shown" : "");
            more.hidden = all.hidden = rest <= 0;
            more.textContent = "Show " + Math.min(1000, rest) + " more";
            all.textContent = "Show all " + found.length;
        }

        const table = make("table", {}, make("thead", {}, make("tr", {}, ...heads)), body);
        section.append(tools, told, make("div", {class: "wide"}, table), more, all);
        draw();
    }

    function addVariables() {
        const used = facts.areas.map((area, index) => ({value: String(index), text: area.name, area}))
            .filter((entry) => entry.area.entries.length > 0);
        const texts = new Map();
        for (const variable of variables) {
            const words = [variable.fullName, variable.type, variable.at, remarksOf(variable)];
            texts.set(variable, words.join(" ").toLowerCase());
        }
        addTable(document.getElementById("variables"), variables, [
            {title: "Name", value: (v) => v.fullName.toLowerCase(), text: (v) => v.fullName, className: "name"},
            {title: "Type", value: (v) => v.type.toLowerCase(), text: (v) => v.type || "?"},
            {title: "Area", value: (v) => v.area, text: (v) => v.area < 0 ? "-" : facts.areas[v.area].name},
            {title: "Place", value: (v) => v.area < 0 ? -1 : v.begin, text: placeOf, isNumber: true, className: "place"},
            {title: "Size", value: (v) => v.area < 0 ? 0 : v.end - v.begin, text: sizeOf, isNumber: true},
            {title: "Uses", value: (v) => v.uses, isNumber: true},
            {title: "Remarks", value: remarksOf, className: "name"}
        ], (v) => texts.get(v), {
            all: "all", title: "Area", entries: used, has: (v, value) => v.area === Number(value)
        });
    }

    function addPous() {
        addTable(document.getElementById("pous"), pous, [
            {title: "Name", value: (p) => p.name.toLowerCase(), text: (p) => p.name, className: "name"},
            {title: "Kind", value: (p) => p.kind},
            {title: "Instructions", value: (p) => p.instructions, isNumber: true},
            {title: "Local", value: (p) => p.local, isNumber: true},
            {title: "Stack", value: (p) => p.depth, isNumber: true},
            {title: "Values", value: (p) => p.values, isNumber: true},
            {title: "Callers", value: (p) => p.callers, isNumber: true},
            {title: "Source", value: (p) => p.file + "\u0000" + String(p.line).padStart(9, "0"),
                text: (p) => (p.file ? p.file + "(" + p.line + ")" : "the compiler") + (p.isUsed ? "" : ", not reached"),
                className: "name"}
        ], (p) => (p.name + " " + p.kind + " " + p.file + (p.isUsed ? "" : " not reached")).toLowerCase());
    }

    // ---- Maps: rows of bytes, in which each variable is a block

    // The rows in which something begins or ends, with its blocks, and what lies between them.
    function findRows(area, rowBits) {
        const rows = new Map();
        const wide = [];   // that fill whole rows between their first and their last
        const add = (row, variable) => {
            if (!rows.has(row)) rows.set(row, []);
            rows.get(row).push(variable);
        };
        for (const index of area.entries) {
            const variable = variables[index];
            const first = Math.floor(variable.begin / rowBits);
            const last = Math.floor((variable.end - 1) / rowBits);
            add(first, variable);
            if (last > first) add(last, variable);
            if (last - first === 2) add(first + 1, variable);
            if (last - first > 2) wide.push({variable, first: first + 1, last: last - 1});
        }
        const numbers = [...rows.keys()].sort((a, b) => a - b);
        for (const range of wide)
            for (const row of numbers) if (row >= range.first && row <= range.last) add(row, range.variable);
        return {rows, numbers, wide};
    }

    function makeBlocks(row, blocks, rowBits, bytes) {
        const cells = make("div", {class: "cells"});
        const laneEnds = [];
        blocks.sort((a, b) => a.begin - b.begin || b.end - a.end || a.index - b.index);
        for (const variable of blocks) {
            const begin = Math.max(variable.begin, row * rowBits);
            const end = Math.min(variable.end, (row + 1) * rowBits);
            let lane = laneEnds.findIndex((laneEnd) => laneEnd <= begin);
            if (lane < 0) lane = laneEnds.length;
            laneEnds[lane] = end;
            const classes = ["block", "c" + variable.index % 6];
            if (begin > variable.begin) classes.push("from");
            if (end < variable.end) classes.push("to");
            if (variable.overlaps > 0) classes.push("clash");
            const left = (begin - row * rowBits) / rowBits * 100;
            const width = (end - begin) / rowBits * 100;
            const block = make("span", {class: classes.join(" "), title: tell(variable), "data-variable": variable.index});
            block.style.left = left + "%";
            block.style.width = width + "%";
            block.style.top = lane * 1.45 + "rem";
            if (end - begin >= bitsOfByte) block.textContent = variable.name;
            cells.append(block);
        }
        cells.style.height = Math.max(1, laneEnds.length) * 1.45 + "rem";
        cells.style.setProperty("--bytes", bytes);
        return cells;
    }

    function makeSkip(text, at) {
        return make("div", {class: "row skip"}, make("div", {class: "at"}, at), make("div", {class: "cells"}, text));
    }

    function drawMap(area, map) {
        const bytes = window.matchMedia("(max-width: 40rem)").matches ? 8 : 16;
        const rowBits = bytes * bitsOfByte;
        const found = findRows(area, rowBits);
        const head = make("div", {class: "cells"});
        for (let byte = 0; byte < bytes; ++byte) head.append(make("span", {}, "+" + byte));
        map.replaceChildren(make("div", {class: "row head"}, make("div", {class: "at"}, "byte"), head));

        const between = (from, to) => {   // rows that hold no end of anything
            if (from >= to) return;
            const cover = found.wide.find((range) => range.first <= from && range.last >= to - 1);
            const size = count((to - from) * bytes, "byte", "bytes");
            map.append(makeSkip("\u2026 " + size + (cover ? " of " + cover.variable.name : " free"), from * bytes));
        };
        let drawn = 0;
        const drawMore = (most) => {
            const last = Math.min(found.numbers.length, drawn + most);
            for (; drawn < last; ++drawn) {
                const row = found.numbers[drawn];
                if (drawn > 0) between(found.numbers[drawn - 1] + 1, row);
                const blocks = found.rows.get(row);
                map.append(make("div", {class: "row"}, make("div", {class: "at"}, String(row * bytes)),
                    makeBlocks(row, blocks, rowBits, bytes)));
                // A bit is too narrow for its name.
                const bits = blocks.filter((v) => isBits(v)).map((v) => placeOf(v) + " " + v.name);
                if (bits.length > 0)
                    map.append(make("div", {class: "row bits"}, make("div", {class: "at"}),
                        make("div", {class: "cells"}, bits.join("  \u00b7  "))));
            }
            if (drawn < found.numbers.length) {
                const rest = found.numbers.length - drawn;
                const more = make("button", {type: "button", class: "more"}, "Draw " + Math.min(200, rest) + " more rows of " + rest);
                more.addEventListener("click", () => { more.remove(); drawMore(200); });
                map.append(more);
                return;
            }
            if (area.size < 0) return;
            const free = area.begin + area.size - area.end;
            const word = area.kind === "local" ? " that the code does not name" : " free";
            if (free > 0) map.append(makeSkip("\u2026 " + count(free, "byte", "bytes") + word, area.end));
        };
        drawMore(40);
    }

    // One stop of the tab key for a whole map; within it the arrow keys walk from block to block.
    function addTelling(map, told) {
        let current = null;
        const show = (block) => {
            if (current) current.classList.remove("current");
            current = block;
            if (!block) return;
            block.classList.add("current");
            told.textContent = tell(variables[Number(block.dataset.variable)]);
        };
        map.addEventListener("click", (event) => {
            const block = event.target.closest(".block");
            if (block) show(block);
        });
        map.addEventListener("keydown", (event) => {
            const step = {ArrowRight: 1, ArrowDown: 1, ArrowLeft: -1, ArrowUp: -1}[event.key];
            if (!step) return;
            const blocks = [...map.querySelectorAll(".block")];
            const next = current && current.isConnected ? blocks.indexOf(current) + step : 0;
            if (!blocks[next]) return;
            event.preventDefault();
            show(blocks[next]);
            blocks[next].scrollIntoView({block: "nearest"});
        });
    }

    function addMaps() {
        const section = document.getElementById("maps");
        section.append(make("p", {class: "hint"},
            "Each block is a variable, at the place of its bytes and bits; what is framed in red shares its place with another. " +
            "Point at a block or walk with the arrow keys to have it told."));
        let open = 0;
        for (const area of facts.areas) {
            if (area.entries.length === 0) continue;
            const map = make("div", {class: "map", tabindex: "0", role: "group", "aria-label": "Map of " + area.name});
            const told = make("p", {class: "told", role: "status"});
            const summary = make("summary", {}, make("b", {}, area.name),
                count(area.entries.length, "variable", "variables") + ", " + count(area.used, "byte", "bytes") + " used" +
                (area.size >= 0 ? " of " + area.size : ""));
            if (area.overlaps > 0)
                summary.append(" ", make("span", {class: "clashes"}, count(area.overlaps, "overlap", "overlaps")));
            const details = make("details", {}, summary, map, told);
            let isDrawn = false;
            const draw = () => {
                if (!details.open || isDrawn) return;
                isDrawn = true;
                drawMap(area, map);
            };
            details.addEventListener("toggle", draw);
            addTelling(map, told);
            section.append(details);
            const isNarrow = window.matchMedia("(max-width: 40rem)");
            isNarrow.addEventListener("change", () => { isDrawn = false; draw(); });
            if (open++ < 6) { details.open = true; draw(); }
        }
        if (open === 0) section.append(make("p", {}, "No variable has a place."));
        window.addEventListener("beforeprint", () => {
            for (const details of section.querySelectorAll("details")) details.open = true;
        });
    }

    // ---- The call tree, made level by level as it is opened

    function makeCall(pou, depth, isDeepest) {
        const facts = pous[pou];
        const sum = make("span", {class: "sum"}, " " + facts.frame + " bytes, " + (depth + facts.frame) + " up to here, " +
            count(facts.instructions, "instruction", "instructions"));
        const name = make("span", {}, facts.name);
        const item = make("li", {});
        const words = [name, sum];
        if (isDeepest) words.push(" ", make("span", {class: "deepest"}, "deepest path"));
        if (facts.callees.length === 0) {
            item.append(make("div", {class: "leaf"}, ...words));
            return item;
        }
        const details = make("details", {}, make("summary", {}, ...words));
        details.addEventListener("toggle", () => {
            if (!details.open || details.querySelector("ul")) return;
            const list = make("ul", {});
            for (const callee of facts.callees)
                list.append(makeCall(callee, depth + facts.frame, isDeepest && callee === facts.deepest));
            details.append(list);
        });
        item.append(details);
        return item;
    }

    function addCalls() {
        const tree = make("ul", {class: "tree"});
        for (const program of facts.programs) tree.append(makeCall(program, 0, true));
        document.getElementById("calls").append(
            make("p", {class: "hint"}, "Bytes are those of the return stack that a call takes."), tree);
    }

    addMaps();
    addVariables();
    addPous();
    addCalls();
    document.documentElement.dataset.ready = "yes";
})();
