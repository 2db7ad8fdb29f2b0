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

  // "a=1&b=2" as an object. Of two equal keys the last one counts: what stands first may be a context or a portal
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

  // Loads a script; the promise tells whether it was there. Scripts load from file:// too, where fetch does not.
  function script(address) {
    return new Promise(function (resolve) {
      var loading = element('script', { src: address });
      loading.onload = function () { resolve(true); };
      loading.onerror = function () { resolve(false); };
      document.head.append(loading);
    });
  }

  // What of a topic name counts when two are compared.
  function topicName(text) {
    return String(text).replace(/[^A-Za-z0-9_-]/g, '').toLowerCase();
  }

  // A field in the bar that goes to the page of results: place is its address up to the words.
  function searchField(what, place) {
    var field = element('input', { type: 'search', name: 'query', 'aria-label': what, placeholder: what });
    var form = element('form', { role: 'search' }, field);
    form.addEventListener('submit', function (event) {
      event.preventDefault();
      if (field.value.trim()) location.href = place(encodeURIComponent(field.value));
    });
    return form;
  }

  return { asked: asked, decoded: decoded, element: element, script: script, searchField: searchField, topicName: topicName };
})();
