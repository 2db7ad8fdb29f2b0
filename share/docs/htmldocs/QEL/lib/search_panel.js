// Results below the search field of the bar, as a person types. Arrow keys choose, Enter goes there, or to the page of
// results where nothing is chosen, Escape closes. Needs page.js, find.js and search.js.
var olhPanel = (function () {
  'use strict';
  var SHOWN = 6, PATIENCE = 300;

  // A result, with its manual where there are several.
  function option(hit, marks, number, isOnly) {
    var heading = hit.anchor && hit.heading !== hit.title ? olh.element('span', { 'class': 'place' }, hit.heading) : '';
    return olh.element('li', { role: 'none' },
      olh.element('a', { role: 'option', id: 'hit-' + number, 'aria-selected': 'false', href: olhSearch.addressOf(hit, marks), tabindex: '-1' }, [olh.element('span', { 'class': 'title' }, hit.title), heading,
        isOnly ? '' : olh.element('span', { 'class': 'from' }, hit.manual.title),
        olh.element('span', { 'class': 'excerpt' }, olhFind.nodes(olhFind.excerpt(hit.text, marks)))]));
  }

  // form and field of the bar; scope: base, the way to the root, and names, the manuals that are searched (null: all).
  function attach(form, field, scope) {
    var list = olh.element('ul', { role: 'listbox', id: 'hits', 'aria-label': 'Results' }), say = olh.element('p', { role: 'status' });
    var box = olh.element('div', { 'class': 'hits', hidden: '' }, [list, say]), turn = 0, chosen = -1;
    form.append(box);
    Object.entries({ role: 'combobox', autocomplete: 'off', 'aria-controls': 'hits', 'aria-autocomplete': 'list', 'aria-expanded': 'false' })
      .forEach(function (pair) { field.setAttribute(pair[0], pair[1]); });

    function open(is) {
      box.hidden = !is;
      field.setAttribute('aria-expanded', String(is));
      if (!is) choose(-1);
    }

    function choose(number) {
      chosen = number;
      Array.from(list.children).forEach(function (one, i) { one.firstElementChild.setAttribute('aria-selected', String(i === number)); });
      if (number < 0) return field.removeAttribute('aria-activedescendant');
      field.setAttribute('aria-activedescendant', list.children[number].firstElementChild.id);
      list.children[number].scrollIntoView({ block: 'nearest' });
    }

    // What the list held goes when there is something else to show: the first result, or that there is none.
    function begin(text) {
      list.replaceChildren();
      say.textContent = text;
      choose(-1);
      open(true);
    }

    async function search() {
      choose(-1);  // what was chosen answers an older query
      var mine = ++turn, query = field.value, isOnly = scope.names && scope.names.length === 1, said, count;
      function overtaken() { return mine !== turn; }
      if (!query.trim()) return open(false);
      var late = setTimeout(function () {  // what loads for long says so
        if (overtaken() || count) return;
        say.textContent = olhSearch.SEARCHING;
        open(true);
      }, PATIENCE);
      try {
        var there = await olhSearch.ask(scope.base, query, scope.names, SHOWN, overtaken, function (index, answer) {
          var marks = olhFind.marksOf(answer, query);
          count = 0;
          said = olhSearch.outcome(index, answer, query, scope.names) + (answer.total > SHOWN ? ' Enter shows all.' : '');
          return function (hit) {
            if (overtaken()) return false;
            if (!count) begin(said);
            list.append(option(hit, marks, count++, isOnly));
          };
        });
        if (overtaken()) return;
        if (!there) open(false);
        else if (!count) begin(said);
      } catch (error) {
        console.error(error);
        if (!overtaken()) begin(olhSearch.FAILED);
      } finally {
        clearTimeout(late);
      }
    }

    field.addEventListener('input', search);
    function stop() {
      turn++;
      open(false);
    }

    field.addEventListener('keydown', function (event) {
      if (event.isComposing) return;  // the keys belong to the input method
      var count = list.children.length, step = { ArrowDown: 1, ArrowUp: -1 }[event.key];
      if (event.key === 'Escape' && !box.hidden) {
        stop();
      } else if (event.key === 'Enter' && chosen >= 0) {
        location.href = list.children[chosen].firstElementChild.href;
      } else if (step && !box.hidden && count) {
        choose(chosen + step < -1 ? count - 1 : chosen + step === count ? -1 : chosen + step);
      } else return;
      event.preventDefault();
    });
    form.addEventListener('focusout', function (event) {
      if (!form.contains(event.relatedTarget)) stop();
    });
    list.addEventListener('mousedown', function (event) { event.preventDefault(); });  // the field keeps the focus
    list.addEventListener('click', function () { open(false); });
    if (field.value) search();
    else olhSearch.indexOf(scope.base);  // it is here when the first letter comes
  }

  return { attach: attach };
})();
