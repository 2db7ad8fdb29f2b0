// What every page needs: the values in its address, elements made from text, scripts loaded in order, a search field.
// Text from an address only ever becomes text: nothing here, or in a script that uses it, writes markup.
var olh = (function () {
  'use strict';

  // Text without its percent signs. A sign that stands for itself stays: the library does not encode it.
  function decoded(text) {
    return text.replace(/(?:%[0-9A-Fa-f]{2})+/g, function (bytes) {
      try { return decodeURIComponent(bytes); } catch (e) { return bytes; }
    });
  }

  // The other way; half a character, which no address holds, is replaced.
  function encoded(text) { return encodeURIComponent(text.replace(/\p{Cs}/gu, '\ufffd')); }

  // "a=1&b=2" as an object. Of two equal keys the last one counts: what comes first may be a context or a portal
  // name, which arrives as it is and could hold an "&" of its own.
  function values(text) {
    var found = Object.create(null);
    text.replace(/^[#?]/, '').split('&').forEach(function (part) {
      var at = part.indexOf('=');
      if (at > 0) found[part.slice(0, at)] = decoded(part.slice(at + 1));
    });
    return found;
  }

  // What the address asks for: query first, then fragment.
  function asked() {
    return Object.assign(values(location.search), values(location.hash));
  }

  // An element with attributes and children; a child that is a string becomes text.
  function element(name, attributes, children) {
    var made = document.createElement(name);
    Object.keys(attributes || {}).forEach(function (key) { made.setAttribute(key, attributes[key]); });
    made.append.apply(made, [].concat(children === undefined ? [] : children));
    return made;
  }

  // Loads a script; the promise says whether it was there. Scripts load from file:// too, where fetch does not. The element
  // goes, since it would keep the text of the script.
  function script(address) {
    return new Promise(function (resolve) {
      var loading = element('script', { src: address });
      function end(there) {
        loading.remove();
        resolve(there);
      }
      loading.onload = function () { end(true); };
      loading.onerror = function () { end(false); };
      document.head.append(loading);
    });
  }

  // Loads scripts that lie beside this one, in any order, and the style of the search with them.
  var lib = document.currentScript.src.replace(/[^\/]*$/, '');
  var loading = {};
  function needed(scripts) {
    if (!document.querySelector('link[href$="search.css"]')) document.head.append(element('link', { rel: 'stylesheet', href: lib + 'search.css' }));
    return Promise.all(scripts.map(function (name) {
      loading[name] = loading[name] || (document.querySelector('script[src$="/' + name + '"]') ? Promise.resolve() : script(lib + name));
      return loading[name];
    }));
  }

  // What of a topic name counts when two are compared.
  function topicName(text) {
    return String(text).replace(/[^A-Za-z0-9_-]/g, '').toLowerCase();
  }

  // Text from an address as a sentence quotes it: a long one would fill the page, or keep the browser busy for minutes.
  function shown(text) {
    return text.length > 80 ? text.slice(0, 79) + '\u2026' : text;
  }

  // Puts an element at the end of the bar, in front of the switch for colours.
  function toBar(made) {
    document.querySelector('.bar .colours').before(made);
  }

  // A field in the bar that goes to the page of results: place is its address up to the words. What is found is shown
  // below it meanwhile, of scope (search_panel.js), once somebody is there.
  function searchField(what, place, scope) {
    var field = element('input', { type: 'search', name: 'query', 'aria-label': what, 'aria-keyshortcuts': '/', placeholder: 'Search' });
    var form = element('form', { role: 'search' }, field);
    field.addEventListener('focus', function () {
      needed(['find.js', 'search.js', 'search_panel.js']).then(function () { olhPanel.attach(form, field, scope); });
    }, { once: true });
    form.addEventListener('submit', function (event) {
      event.preventDefault();
      if (field.value.trim()) location.href = place(encoded(field.value));
    });
    return form;
  }

  // The colours: the system's, unless this reader has chosen others. A picture that comes in both follows them.
  var kinds = { system: '\u25d0', light: '\u2600', dark: '\u263e' };
  function chosenColours(set) {
    try {
      if (set) localStorage.setItem('olh.colours', set);
      return kinds[localStorage.getItem('olh.colours')] ? localStorage.getItem('olh.colours') : 'system';
    } catch (e) { return set || 'system'; }
  }

  function showColours(chosen) {
    if (chosen === 'system') delete document.documentElement.dataset.colours;
    else document.documentElement.dataset.colours = chosen;
    document.querySelectorAll('source[data-colours=dark]').forEach(function (source) {
      source.media = { system: '(prefers-color-scheme: dark)', light: 'not all', dark: 'all' }[chosen];
    });
  }

  function colourSwitch() {
    var button = element('button', { type: 'button', 'class': 'colours' });
    function show(chosen) {
      showColours(chosen);
      button.textContent = kinds[chosen] + '\ufe0e';
      button.title = 'Colours: ' + chosen;
      button.setAttribute('aria-label', button.title);
    }
    button.addEventListener('click', function () {
      show(chosenColours({ system: 'light', light: 'dark', dark: 'system' }[chosenColours()]));
    });
    show(chosenColours());
    return button;
  }

  // "/" goes to the search.
  function searchByKey(event) {
    var field = document.querySelector('.bar input[type=search], #query');
    if (event.key !== '/' || !field || event.altKey || event.ctrlKey || event.metaKey || event.target.closest('input, select, textarea, [contenteditable]')) return;
    event.preventDefault();
    field.focus();
  }

  // A page that a search leads to marks the words.
  function markWords() {
    var words = (asked().mark || '').split(' ').filter(Boolean).slice(0, 32), main = document.querySelector('main');
    if (words.length && main) needed(['find.js']).then(function () { olhFind.markIn(main, words); });
  }

  showColours(chosenColours());
  addEventListener('keydown', searchByKey);
  addEventListener('DOMContentLoaded', function () {
    var bar = document.querySelector('.bar');
    if (bar) bar.append(colourSwitch());
    markWords();
  });

  return { asked: asked, decoded: decoded, encoded: encoded, element: element, script: script, searchField: searchField, shown: shown, toBar: toBar,
    topicName: topicName };
})();
