// The frame of an HTML manual. Its start page follows #context=NAME&topic=TOPIC&single=true|popup to the topic's own
// page; every topic page gets the contents beside it, unless it is shown alone (single=true) or as a popup. What context
// says does not matter: the manual is the one that this page belongs to.
var olhManual = { title: '', topics: [] };

// The topic table, QELdata/QELAllData.js, is made of calls of these two.
function QELAddBookVar(name, value) { if (name === 'DocTitle') olhManual.title = value; }
function QELAddTopic(row) { olhManual.topics.push({ id: row[0], page: row[1], title: row[2], group: row[3] || '' }); }

(function () {
  'use strict';
  var path = olh.decoded(location.pathname).split('/');
  var here = path.pop() || 'index.htm', manual = path.pop();
  var single = olh.asked().single;
  if (single === 'true' || single === 'popup') document.documentElement.dataset.single = single;

  function topicOf(name) {
    var wanted = olh.topicName(name);
    return olhManual.topics.find(function (topic) { return olh.topicName(topic.id) === wanted; });
  }

  // Goes to the topic that the address names. The address of the request is replaced, so that "back" leaves the manual.
  function follow() {
    var asked = olh.asked();
    if (!asked.topic) return;
    var topic = topicOf(asked.topic);
    if (topic) {
      var shown = asked.single === 'true' || asked.single === 'popup' ? '#single=' + asked.single : '';
      if (topic.page !== here) return location.replace(topic.page + shown);
      history.replaceState(null, '', topic.page + shown);
      return location.reload();
    }
    var say = document.getElementById('missing');
    if (say) say.textContent = 'There is no topic "' + asked.topic + '" in this manual. These are its topics:';
    else location.replace('index.htm#topic=' + encodeURIComponent(asked.topic));
  }

  function link(topic, text) {
    var made = olh.element('a', { href: topic.page }, text || topic.title);
    if (topic.page === here) made.setAttribute('aria-current', 'page');
    return made;
  }

  function contents() {
    var wide = matchMedia('(min-width: 60rem)');
    var box = olh.element('details', {}, olh.element('summary', {}, 'Contents'));
    var group = null, list;
    olhManual.topics.forEach(function (topic) {
      if (topic.group !== group) {
        group = topic.group;
        list = olh.element('ul');
        box.append(group ? olh.element('h2', {}, group) : '', list);
      }
      list.append(olh.element('li', {}, link(topic)));
    });
    var fit = function () { box.open = wide.matches; };
    fit();
    wide.addEventListener('change', fit);
    return olh.element('nav', { 'class': 'toc', 'aria-label': 'Contents' }, box);
  }

  function turning(at) {
    var before = olhManual.topics[at - 1], after = olhManual.topics[at + 1];
    var row = olh.element('nav', { 'class': 'turn', 'aria-label': 'Previous and next topic' });
    if (before) row.append(olh.element('a', { href: before.page, rel: 'prev' }, '\u2190 ' + before.title));
    if (after) row.append(olh.element('a', { href: after.page, rel: 'next', 'class': 'next' }, after.title + ' \u2192'));
    return row;
  }

  // The headings of a long page, for wide screens.
  function headings(main) {
    var found = Array.from(main.querySelectorAll('h2[id]'));
    return found.length < 3 ? '' : olh.element('nav', { 'class': 'here', 'aria-label': 'On this page' }, [
      olh.element('p', {}, 'On this page'),
      olh.element('ul', {}, found.map(function (heading) {
        return olh.element('li', {}, olh.element('a', { href: '#' + heading.id }, heading.textContent));
      }))]);
  }

  // What is too wide for the screen can be scrolled with the keyboard.
  function reachable() {
    document.querySelectorAll('pre, .wide').forEach(function (box) {
      if (box.scrollWidth > box.clientWidth) box.tabIndex = 0;
      else box.removeAttribute('tabindex');
    });
  }

  // A topic shown alone leads to topics shown alone.
  function keepAlone(single) {
    document.querySelectorAll('main a').forEach(function (link) {
      var page = link.getAttribute('href');
      if (/^[^\/:#?]+\.htm$/.test(page)) link.setAttribute('href', page + '#single=' + single);
    });
  }

  // A link to this topic's place in the PDF of the same manual, when the generated list says that there is one.
  function pdfLink(topic) {
    olh.script('../QEL/lib/LibList.js').then(function () {
      if (typeof mPDFList === 'undefined' || mPDFList.indexOf(manual) < 0) return;
      var place = 'M8.newlink.' + topic.id.replace(/ /g, '.').replace(/[^A-Za-z0-9.]/g, '');
      var bar = document.querySelector('.bar nav');
      if (bar) bar.prepend(olh.element('a', { href: '../../pdfdocs/' + manual + '.pdf#nameddest=' + place }, 'This topic in the PDF'));
    });
  }

  function frame() {
    follow();
    reachable();
    addEventListener('resize', reachable);
    if (document.documentElement.dataset.single) return keepAlone(document.documentElement.dataset.single);
    var main = document.querySelector('main');
    var at = olhManual.topics.findIndex(function (topic) { return topic.page === here; });
    document.body.prepend(olh.element('a', { 'class': 'skip', href: '#topic' }, 'Skip to the topic'));
    document.querySelector('.bar').append(
      olh.element('nav', { 'aria-label': 'Elsewhere' }, olh.element('a', { href: '../../index.html' }, 'All documentation')),
      olh.searchField('Search this manual', function (words) {
        return '../qelhelp.htm#context=' + encodeURIComponent(manual) + '&query=' + words + '&tab=2&src=doc';
      }));
    if (at < 0) return;
    document.body.classList.add('framed');
    main.before(contents());
    main.after(headings(main));
    main.append(turning(at));
    pdfLink(olhManual.topics[at]);
  }

  addEventListener('DOMContentLoaded', frame);
  addEventListener('hashchange', follow);
})();
