// Our own stand-in for the web platform tests' testharness.js and the canvas test helpers, small
// enough to run inside any engine with a canvas: ours (through the conformance runner) and
// Node with a canvas library (run-node.mjs). It also plays the page: given the text of one
// generated canvas test file it makes the file's <canvas> elements, runs its inline scripts,
// fires the load event and reports every test.
//
//   __wpt.run(htmlText) -> "PASS\tname\n" | "FAIL\tname\tmessage\n" lines, or "SKIP\treason\n"
//
// Only synchronous tests count. A file is skipped with a reason when it needs what a single
// synchronous evaluation cannot give: promise tests, timers, images, video, OffscreenCanvas,
// workers, web fonts or other support files.
(function (global) {
  "use strict";
  if (!global.window) global.window = global;

  // ---- values and messages -------------------------------------------------------------------
  function formatValue(v) {
    if (v === undefined) return "undefined";
    if (v === null) return "null";
    if (typeof v === "string") {
      return '"' + v.replace(/[\\"\n\r\t\u0000-\u001f]/g, function (c) {
        var named = { "\\": "\\\\", '"': '\\"', "\n": "\\n", "\r": "\\r", "\t": "\\t" }[c];
        return named || "\\u" + ("000" + c.charCodeAt(0).toString(16)).slice(-4);
      }) + '"';
    }
    if (typeof v === "number") return v === 0 && 1 / v < 0 ? "-0" : String(v);
    if (typeof v === "symbol" || typeof v === "bigint") return String(v);
    if (Array.isArray(v)) return "[" + v.map(formatValue).join(", ") + "]";
    try { return String(v); } catch (e) { return "[object]"; }
  }

  function AssertionError(message) { this.message = message; }
  AssertionError.prototype.toString = function () { return this.message; };
  function PreconditionFailed(message) { this.message = message; }

  function fail(assertion, description, detail) {
    throw new AssertionError(assertion + ": " + (description ? description + " " : "") + detail);
  }

  function sameValue(x, y) {
    if (x !== x && y !== y) return true; // NaN
    if (x === 0 && y === 0) return 1 / x === 1 / y;
    return x === y;
  }

  // ---- testharness assertions ----------------------------------------------------------------
  var asserts = {
    assert_true: function (actual, description) {
      if (actual !== true) fail("assert_true", description, "expected true got " + formatValue(actual));
    },
    assert_false: function (actual, description) {
      if (actual !== false) fail("assert_false", description, "expected false got " + formatValue(actual));
    },
    assert_equals: function (actual, expected, description) {
      if (typeof actual !== typeof expected) {
        fail("assert_equals", description, "expected (" + typeof expected + ") " + formatValue(expected) +
             " but got (" + typeof actual + ") " + formatValue(actual));
      }
      if (!sameValue(actual, expected)) {
        fail("assert_equals", description, "expected " + formatValue(expected) + " but got " + formatValue(actual));
      }
    },
    assert_not_equals: function (actual, expected, description) {
      if (sameValue(actual, expected)) fail("assert_not_equals", description, "got disallowed value " + formatValue(actual));
    },
    assert_in_array: function (actual, expected, description) {
      if (expected.indexOf(actual) < 0) fail("assert_in_array", description, "value " + formatValue(actual) + " not in array " + formatValue(expected));
    },
    assert_array_equals: function (actual, expected, description) {
      if (actual === null || typeof actual !== "object" || !("length" in actual)) {
        fail("assert_array_equals", description, "value is " + formatValue(actual) + ", expected array");
      }
      if (actual.length !== expected.length) {
        fail("assert_array_equals", description, "lengths differ, expected array " + formatValue(expected) + " length " + expected.length + ", got " + formatValue(Array.prototype.slice.call(actual)) + " length " + actual.length);
      }
      for (var i = 0; i < actual.length; i++) {
        if (!sameValue(actual[i], expected[i])) {
          fail("assert_array_equals", description, "expected property " + i + " to be " + formatValue(expected[i]) + " but got " + formatValue(actual[i]));
        }
      }
    },
    assert_approx_equals: function (actual, expected, epsilon, description) {
      if (typeof actual !== "number") fail("assert_approx_equals", description, "expected a number but got a " + typeof actual);
      if (!(Math.abs(actual - expected) <= epsilon) && !(actual === expected)) {
        fail("assert_approx_equals", description, "expected " + formatValue(expected) + " +/- " + epsilon + " but got " + formatValue(actual));
      }
    },
    assert_array_approx_equals: function (actual, expected, epsilon, description) {
      if (actual.length !== expected.length) fail("assert_array_approx_equals", description, "lengths differ");
      for (var i = 0; i < actual.length; i++) {
        if (!(Math.abs(actual[i] - expected[i]) <= epsilon)) {
          fail("assert_array_approx_equals", description, "property " + i + ", expected " + formatValue(expected[i]) + " +/- " + epsilon + " but got " + formatValue(actual[i]));
        }
      }
    },
    assert_less_than: function (a, b, d) { if (!(typeof a === "number" && a < b)) fail("assert_less_than", d, "expected a number less than " + b + " but got " + formatValue(a)); },
    assert_greater_than: function (a, b, d) { if (!(typeof a === "number" && a > b)) fail("assert_greater_than", d, "expected a number greater than " + b + " but got " + formatValue(a)); },
    assert_less_than_equal: function (a, b, d) { if (!(typeof a === "number" && a <= b)) fail("assert_less_than_equal", d, "expected a number less than or equal to " + b + " but got " + formatValue(a)); },
    assert_greater_than_equal: function (a, b, d) { if (!(typeof a === "number" && a >= b)) fail("assert_greater_than_equal", d, "expected a number greater than or equal to " + b + " but got " + formatValue(a)); },
    assert_between_exclusive: function (a, lo, hi, d) { if (!(a > lo && a < hi)) fail("assert_between_exclusive", d, "expected a number between " + lo + " and " + hi + " but got " + formatValue(a)); },
    assert_between_inclusive: function (a, lo, hi, d) { if (!(a >= lo && a <= hi)) fail("assert_between_inclusive", d, "expected a number between " + lo + " and " + hi + " but got " + formatValue(a)); },
    assert_regexp_match: function (a, re, d) { if (!re.test(a)) fail("assert_regexp_match", d, "expected " + formatValue(a) + " to match " + re); },
    assert_class_string: function (object, name, d) {
      var actual = Object.prototype.toString.call(object);
      if (actual !== "[object " + name + "]") fail("assert_class_string", d, "expected \"[object " + name + "]\" but got " + formatValue(actual));
    },
    assert_own_property: function (object, name, d) {
      if (!Object.prototype.hasOwnProperty.call(object, name)) fail("assert_own_property", d, "expected property " + formatValue(name) + " missing");
    },
    assert_not_own_property: function (object, name, d) {
      if (Object.prototype.hasOwnProperty.call(object, name)) fail("assert_not_own_property", d, "unexpected property " + formatValue(name) + " is found on object");
    },
    assert_inherits: function (object, name, d) {
      if (!(name in object) || Object.prototype.hasOwnProperty.call(object, name)) fail("assert_inherits", d, "property " + formatValue(name) + " is not inherited");
    },
    assert_idl_attribute: function (object, name, d) {
      if (!(name in object)) fail("assert_idl_attribute", d, "property " + formatValue(name) + " not found in prototype chain");
    },
    assert_readonly: function (object, name, d) {
      var before = object[name];
      try { object[name] = before + "a"; } catch (e) { /* strict mode setters may throw */ }
      if (!sameValue(object[name], before)) {
        try { object[name] = before; } catch (e) { /* ignore */ }
        fail("assert_readonly", d, "changing property " + formatValue(name) + " succeeded");
      }
    },
    assert_unreached: function (d) { fail("assert_unreached", d, "reached unreachable code"); },
    assert_implements: function (condition, d) { if (!condition) fail("assert_implements", d, "not implemented"); },
    assert_implements_optional: function (condition, d) {
      if (!condition) throw new PreconditionFailed("assert_implements_optional: " + (d || ""));
    },
    assert_throws_js: function (constructor, func, description) {
      try {
        func.call(null);
      } catch (e) {
        if (e instanceof AssertionError) throw e;
        var name = constructor && constructor.name;
        if (e === null || typeof e !== "object" || e.name !== name) {
          fail("assert_throws_js", description, formatValue(func) + " threw " + describeThrown(e) + " (not " + name + ")");
        }
        return;
      }
      fail("assert_throws_js", description, formatValue(func) + " did not throw");
    },
    assert_throws_dom: function (type, funcOrConstructor, descriptionOrFunc, maybeDescription) {
      var func = funcOrConstructor, description = descriptionOrFunc, constructor = global.DOMException;
      if (typeof descriptionOrFunc === "function") {
        constructor = funcOrConstructor; func = descriptionOrFunc; description = maybeDescription;
      }
      var expected = domExceptionKind(type);
      try {
        func.call(null);
      } catch (e) {
        if (e instanceof AssertionError) throw e;
        if (e === null || typeof e !== "object") {
          fail("assert_throws_dom", description, formatValue(func) + " threw " + formatValue(e) + ", not an object");
        }
        if (e.name !== expected.name || e.code !== expected.code) {
          fail("assert_throws_dom", description, formatValue(func) + " threw " + describeThrown(e) +
               " that is not a DOMException " + expected.name + ": property \"code\" is " + formatValue(e.code) +
               ", expected " + expected.code);
        }
        if (typeof constructor === "function" && !(e instanceof constructor)) {
          fail("assert_throws_dom", description, "thrown " + expected.name + " is not an instance of DOMException");
        }
        return;
      }
      fail("assert_throws_dom", description, formatValue(func) + " did not throw");
    },
    assert_throws_exactly: function (value, func, description) {
      try { func.call(null); } catch (e) {
        if (e instanceof AssertionError) throw e;
        if (!sameValue(e, value)) fail("assert_throws_exactly", description, "threw " + formatValue(e) + " but we expected it to throw " + formatValue(value));
        return;
      }
      fail("assert_throws_exactly", description, "did not throw");
    },
  };
  asserts.assert_throws = function (type, func, description) { // the old form
    if (typeof type === "function") return asserts.assert_throws_js(type, func, description);
    return asserts.assert_throws_dom(typeof type === "object" && type ? type.name : type, func, description);
  };

  function describeThrown(e) {
    if (e && typeof e === "object") return (e.name || "object") + (e.message ? " (\"" + e.message + "\")" : "");
    return formatValue(e);
  }

  var DOM_CODES = {
    IndexSizeError: 1, HierarchyRequestError: 3, WrongDocumentError: 4, InvalidCharacterError: 5,
    NoModificationAllowedError: 7, NotFoundError: 8, NotSupportedError: 9, InUseAttributeError: 10,
    InvalidStateError: 11, SyntaxError: 12, InvalidModificationError: 13, NamespaceError: 14,
    InvalidAccessError: 15, TypeMismatchError: 17, SecurityError: 18, NetworkError: 19,
    AbortError: 20, URLMismatchError: 21, QuotaExceededError: 22, TimeoutError: 23,
    InvalidNodeTypeError: 24, DataCloneError: 25,
  };
  var LEGACY_NAMES = {
    INDEX_SIZE_ERR: "IndexSizeError", HIERARCHY_REQUEST_ERR: "HierarchyRequestError",
    WRONG_DOCUMENT_ERR: "WrongDocumentError", INVALID_CHARACTER_ERR: "InvalidCharacterError",
    NO_MODIFICATION_ALLOWED_ERR: "NoModificationAllowedError", NOT_FOUND_ERR: "NotFoundError",
    NOT_SUPPORTED_ERR: "NotSupportedError", INUSE_ATTRIBUTE_ERR: "InUseAttributeError",
    INVALID_STATE_ERR: "InvalidStateError", SYNTAX_ERR: "SyntaxError",
    INVALID_MODIFICATION_ERR: "InvalidModificationError", NAMESPACE_ERR: "NamespaceError",
    INVALID_ACCESS_ERR: "InvalidAccessError", TYPE_MISMATCH_ERR: "TypeMismatchError",
    SECURITY_ERR: "SecurityError", NETWORK_ERR: "NetworkError", ABORT_ERR: "AbortError",
    URL_MISMATCH_ERR: "URLMismatchError", QUOTA_EXCEEDED_ERR: "QuotaExceededError",
    TIMEOUT_ERR: "TimeoutError", INVALID_NODE_TYPE_ERR: "InvalidNodeTypeError",
    DATA_CLONE_ERR: "DataCloneError",
  };
  function domExceptionKind(type) {
    if (typeof type === "number") {
      for (var n in DOM_CODES) if (DOM_CODES[n] === type) return { name: n, code: type };
    }
    var name = LEGACY_NAMES[type] || type;
    return { name: name, code: DOM_CODES[name] || 0 };
  }

  // ---- tests ---------------------------------------------------------------------------------
  var tests = [];
  var loadHandlers = [];

  function Test(name) {
    this.name = name;
    this.status = null; // "PASS", "FAIL", "SKIP" once finished
    this.message = "";
    this.cleanups = [];
    this.wantsTime = false;
    tests.push(this);
  }
  Test.prototype.step = function (func, self) {
    if (this.status) return undefined;
    try {
      return func.apply(self === undefined ? this : self, Array.prototype.slice.call(arguments, 2));
    } catch (e) {
      this.finish(e instanceof PreconditionFailed ? "FAIL" : "FAIL", errorText(e));
      return undefined;
    }
  };
  Test.prototype.step_func = function (func, self) {
    var test = this;
    return function () { return test.step.apply(test, [func, self].concat(Array.prototype.slice.call(arguments))); };
  };
  Test.prototype.step_func_done = function (func, self) {
    var test = this;
    return function () {
      if (func) test.step.apply(test, [func, self].concat(Array.prototype.slice.call(arguments)));
      test.done();
    };
  };
  Test.prototype.unreached_func = function (description) {
    var test = this;
    return function () { test.step(function () { asserts.assert_unreached(description); }); };
  };
  Test.prototype.step_timeout = function () { this.wantsTime = true; return 0; };
  Test.prototype.add_cleanup = function (func) { this.cleanups.push(func); };
  Test.prototype.done = function () { this.finish("PASS", ""); };
  Test.prototype.finish = function (status, message) {
    if (this.status) return;
    this.status = status;
    this.message = message;
    for (var i = 0; i < this.cleanups.length; i++) {
      try { this.cleanups[i](); } catch (e) { /* a cleanup cannot fail a finished test */ }
    }
  };

  function errorText(e) {
    if (e instanceof AssertionError || e instanceof PreconditionFailed) return e.message;
    if (e && typeof e === "object") return (e.name || "Error") + ": " + (e.message || "");
    return "threw " + formatValue(e);
  }

  global.test = function (func, name) {
    var t = new Test(name || "(unnamed)");
    t.step(func, t, t);
    t.done();
    return t;
  };
  // generate_tests(func, [[name, args...], ...]): one test per entry, func applied to its args.
  global.generate_tests = function (func, args, properties) {
    for (var i = 0; i < args.length; i++) {
      (function (entry) {
        global.test(function () { return func.apply(this, entry.slice(1)); }, entry[0], properties);
      })(Array.prototype.slice.call(args[i]));
    }
  };
  global.async_test = function (funcOrName, name) {
    var t = new Test(typeof funcOrName === "string" ? funcOrName : name || "(unnamed)");
    if (typeof funcOrName === "function") t.step(funcOrName, t, t);
    return t;
  };
  global.promise_test = function (func, name) {
    var t = new Test(name || "(unnamed)");
    t.finish("SKIP", "promise_test");
    return t;
  };
  global.setup = function () {};
  global.done = function () {};
  global.add_completion_callback = function () {};
  global.add_result_callback = function () {};
  global.format_value = formatValue;
  global.on_event = function (target, type, handler) {
    if (type === "load" && (target === global || target === global.window)) loadHandlers.push(handler);
    else if (target && target.addEventListener) target.addEventListener(type, handler);
  };
  for (var name in asserts) global[name] = asserts[name];

  // ---- canvas test helpers -------------------------------------------------------------------
  global._valueToString = function (v) {
    if (typeof v === "string") return formatValue(v);
    return formatValue(v);
  };
  global._assert = function (cond, text) { asserts.assert_true(!!cond, text); };
  global._assertSame = function (a, b, textA, textB) {
    asserts.assert_true(a === b, textA + " === " + textB + " (got " + formatValue(a) + "[" + typeof a +
                        "], expected " + formatValue(b) + "[" + typeof b + "])");
  };
  global._assertDifferent = function (a, b, textA, textB) {
    asserts.assert_true(a !== b, textA + " !== " + textB + " (got " + formatValue(a) + "[" + typeof a +
                        "], expected not " + formatValue(b) + "[" + typeof b + "])");
  };
  global._assertMatch = function (a, b, textA, textB) {
    asserts.assert_true(b.test(a), textA + " matches " + textB + " (got " + formatValue(a) + ")");
  };
  global._getPixel = function (canvas, x, y) {
    var data = canvas.getContext("2d").getImageData(x, y, 1, 1).data;
    return [data[0], data[1], data[2], data[3]];
  };
  var CHANNELS = ["Red", "Green", "Blue", "Alpha"];
  global._assertPixel = function (canvas, x, y, r, g, b, a) {
    var c = global._getPixel(canvas, x, y), want = [r, g, b, a];
    for (var i = 0; i < 4; i++) {
      asserts.assert_equals(c[i], want[i], CHANNELS[i] + " channel of the pixel at (" + x + ", " + y + ")");
    }
  };
  global._assertPixelApprox = function (canvas, x, y, r, g, b, a) {
    var tolerance = 0;
    for (var k = arguments.length - 1; k >= 7; k--) {
      if (typeof arguments[k] === "number") { tolerance = arguments[k]; break; }
    }
    var c = global._getPixel(canvas, x, y), want = [r, g, b, a];
    for (var i = 0; i < 4; i++) {
      asserts.assert_approx_equals(c[i], want[i], tolerance, CHANNELS[i] + " channel of the pixel at (" + x + ", " + y + ")");
    }
  };
  global._assertGreen = function (ctx, width, height) {
    var data = ctx.getImageData(0, 0, width, height).data;
    for (var i = 0; i < data.length; i += 4) {
      var p = (i / 4) | 0;
      if (data[i] !== 0 || data[i + 1] !== 255 || data[i + 2] !== 0 || data[i + 3] !== 255) {
        asserts.assert_true(false, "pixel (" + (p % width) + ", " + ((p / width) | 0) + ") is [" +
                            Array.prototype.slice.call(data, i, i + 4).join(",") + "], not green");
      }
    }
  };
  global._addTest = function (body, canvasOptions) {
    var deferred = false;
    global.deferTest = function () { deferred = true; };
    loadHandlers.push(function () {
      var t = global.t;
      t.step(function () {
        var canvas = global.document.getElementById("c");
        var ctx = canvas.getContext("2d", canvasOptions);
        body(canvas, ctx, t);
      });
      if (!deferred) t.done();
      else t.wantsTime = true;
    });
  };

  // ---- the page ------------------------------------------------------------------------------
  var HARNESS_FILES = /\/(testharness|testharnessreport|canvas-tests)\.js$/;
  var SKIP_RULES = [
    [/\bpromise_test\s*\(/, "promise tests"],
    [/OffscreenCanvas/, "OffscreenCanvas"],
    [/\bnew\s+(Shared)?Worker\b|\.worker\.js/, "workers"],
    [/<img\b|new\s+Image\b|class=["']?resource|createImageBitmap|ImageBitmap|<video\b|<svg\b|\.decode\(\)/, "images or video"],
    [/<iframe\b|window\.open\(/, "other documents"],
    [/@font-face|document\.fonts|new\s+FontFace\b|ahem|\/fonts\//i, "web fonts"],
    [/\bdeferTest\s*\(|step_timeout|setTimeout|setInterval|requestAnimationFrame|requestIdleCallback|step_func|\.onload\s*=|addEventListener\s*\(\s*["']load/, "asynchronous"],
    [/<link[^>]+rel=["']?(match|mismatch)/, "reftest"],
    [/\bfetch\s*\(|XMLHttpRequest/, "network"],
    // Theme scripts draw on a canvas of their own; the engine lays no document out.
    [/caretPositionFromPoint|createRange\s*\(|getSelection\s*\(/, "document layout"],
  ];

  function decodeEntities(text) {
    return text.replace(/&(lt|gt|amp|quot|#39);/g, function (_, e) {
      return { lt: "<", gt: ">", amp: "&", quot: '"', "#39": "'" }[e];
    });
  }

  // Which reason, if any, keeps the file out of the count.
  function skipReason(html, scripts) {
    var m, re = /<script\b[^>]*\bsrc\s*=\s*["']?([^"'\s>]+)/gi;
    while ((m = re.exec(html))) {
      if (!HARNESS_FILES.test(m[1])) return "needs " + m[1];
    }
    if (!/<script\b[^>]*\bsrc\s*=\s*["']?[^"'\s>]*testharness\.js/i.test(html)) return "not a testharness test";
    var text = html;
    for (var i = 0; i < SKIP_RULES.length; i++) {
      if (SKIP_RULES[i][0].test(text)) return SKIP_RULES[i][1];
    }
    if (scripts.length === 0) return "no test script";
    return null;
  }

  // The page's elements, built from its markup the way a parser would for these simple pages:
  // nested start and end tags, void elements, a <p> closed by the next block, attributes set
  // with setAttribute (so a canvas parses width="0x100" as HTML does). Text, comments and what
  // belongs in the head are left out. Where the document can only make canvases (Node), the
  // other elements are skipped and their children go to the nearest element that was made.
  var VOID_ELEMENTS = /^(area|base|br|col|embed|hr|img|input|link|meta|source|track|wbr|param)$/;
  var LEFT_OUT = /^(html|head|body|title|meta|link|script|style|base|template)$/;
  var RAW_TEXT = /^(script|style|title|textarea|template)$/;
  var CLOSES_P = /^(address|article|aside|blockquote|details|div|dl|fieldset|figcaption|figure|footer|form|h[1-6]|header|hr|main|nav|ol|p|pre|section|table|ul)$/;
  var made = {};

  function attributesOf(text) {
    var list = [], m, re = /([^\s"'>\/=]+)(?:\s*=\s*(?:"([^"]*)"|'([^']*)'|([^\s"'>]+)))?/g;
    while ((m = re.exec(text))) {
      var value = m[2] !== undefined ? m[2] : m[3] !== undefined ? m[3] : m[4] !== undefined ? m[4] : "";
      list.push([m[1].toLowerCase(), decodeEntities(value)]);
    }
    return list;
  }

  function makeElement(name, attributes) {
    var element;
    try { element = global.document.createElement(name); } catch (e) { return null; }
    for (var i = 0; i < attributes.length; i++) {
      var attr = attributes[i];
      if (typeof element.setAttribute === "function") {
        try { element.setAttribute(attr[0], attr[1]); } catch (e) { /* an odd name: left out */ }
      } else if (attr[0] === "width" || attr[0] === "height") {
        element[attr[0]] = Number(attr[1]); // a library canvas without attributes
      }
      if (attr[0] === "id") made[attr[1]] = element;
    }
    return element;
  }

  function buildPage(html) {
    var doc = global.document;
    var root = doc.body || null;
    // Open elements: {name, element}; element is null where it could not be made.
    var open = [{ name: "body", element: root }];
    var nearest = function () {
      for (var k = open.length - 1; k >= 0; k--) if (open[k].element) return open[k].element;
      return null;
    };
    var close = function (name) {
      for (var k = open.length - 1; k > 0; k--) {
        if (open[k].name === name) { open.length = k; return; }
      }
    };
    var tag = /<!--[\s\S]*?-->|<!\w[^>]*>|<(\/?)([a-zA-Z][a-zA-Z0-9-]*)((?:[^>"']|"[^"]*"|'[^']*')*)>/g;
    var m;
    while ((m = tag.exec(html))) {
      if (!m[2]) continue; // a comment or a doctype
      var name = m[2].toLowerCase();
      if (m[1]) { close(name); continue; }
      if (RAW_TEXT.test(name)) {
        var end = html.toLowerCase().indexOf("</" + name, tag.lastIndex);
        tag.lastIndex = end < 0 ? html.length : end;
        continue;
      }
      if (LEFT_OUT.test(name)) continue;
      if (CLOSES_P.test(name) && open.length > 1 && open[open.length - 1].name === "p") open.length -= 1;
      var element = makeElement(name, attributesOf(m[3].replace(/\/\s*$/, "")));
      var parent = nearest();
      if (element && parent && typeof parent.appendChild === "function") {
        try { parent.appendChild(element); } catch (e) { /* detached is fine */ }
      }
      if (!VOID_ELEMENTS.test(name) && !/\/\s*$/.test(m[3])) open.push({ name: name, element: element });
    }
  }

  // Where the document cannot find what it made (Node's stand-in), ids are looked up here.
  function installLookup() {
    var doc = global.document;
    var original = doc.getElementById;
    var missing = false;
    for (var id in made) {
      if (!original || original.call(doc, id) !== made[id]) missing = true;
    }
    if (!missing) return;
    var lookup = function (id) {
      if (Object.prototype.hasOwnProperty.call(made, id)) return made[id];
      return original ? original.call(doc, id) : null;
    };
    try { doc.getElementById = lookup; } catch (e) { /* fall through to the check below */ }
    if (doc.getElementById !== lookup) {
      Object.defineProperty(doc, "getElementById", { value: lookup, configurable: true, writable: true });
    }
  }

  function report() {
    var lines = [];
    for (var i = 0; i < tests.length; i++) {
      var t = tests[i];
      if (!t.status && t.wantsTime) t.finish("SKIP", "asynchronous");
      if (!t.status) t.finish("SKIP", "asynchronous (not done after load)");
      var name = String(t.name).replace(/[\t\n]/g, " ");
      var message = String(t.message).replace(/[\t\n]/g, " ");
      lines.push(t.status + "\t" + name + (t.status === "PASS" ? "" : "\t" + message));
    }
    return lines.join("\n") + "\n";
  }

  var indirectEval = eval;
  global.__wpt = {
    run: function (html) {
      var scripts = [], m, re = /<script\b([^>]*)>([\s\S]*?)<\/script>/gi;
      while ((m = re.exec(html))) {
        if (!/\bsrc\s*=/.test(m[1])) scripts.push(m[2]);
      }
      var reason = skipReason(html, scripts);
      if (reason) return "SKIP\t" + reason + "\n";
      buildPage(html);
      installLookup();
      var errors = [];
      for (var i = 0; i < scripts.length; i++) {
        try { indirectEval(scripts[i]); } catch (e) { errors.push(errorText(e)); }
      }
      for (var h = 0; h < loadHandlers.length; h++) {
        try { loadHandlers[h].call(global, {}); } catch (e) { errors.push(errorText(e)); }
      }
      var text = report();
      for (var k = 0; k < errors.length; k++) text += "FAIL\t(script error)\t" + errors[k].replace(/[\t\n]/g, " ") + "\n";
      return text;
    },
  };
})(typeof globalThis !== "undefined" ? globalThis : this);
