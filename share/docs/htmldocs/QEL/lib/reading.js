// Helps to read a long page: a link at every heading, the headings beside the text, commands that can be copied. Needs
// page.js, and changes nothing of the text.
(function () {
  'use strict';

  function headingLink(heading) {
    heading.append(olh.element('a', { 'class': 'place', href: '#' + heading.id, 'aria-label': 'Link to ' + heading.textContent }));
  }

  // Where the clipboard is closed to pages (as over plain http://), the text is selected and copied as a person does it.
  function copy(pre) {
    var written = navigator.clipboard ? navigator.clipboard.writeText(pre.textContent) : Promise.reject();
    return written.catch(function () {
      getSelection().selectAllChildren(pre);
      if (!document.execCommand('copy')) throw new Error();
    });
  }

  // A button on what is to be copied: blocks whose language is named.
  function copyButton(pre) {
    var button = olh.element('button', { type: 'button', 'class': 'copy' }, 'Copy');
    var say = function (text) {
      button.textContent = text;
      setTimeout(function () { button.textContent = 'Copy'; }, 2000);
    };
    button.addEventListener('click', function () {
      copy(pre).then(function () { say('Copied'); }, function () { say('Press Ctrl+C'); });
    });
    var box = olh.element('div', { 'class': 'code' });
    pre.replaceWith(box);
    box.append(pre, button);
  }

  // "On this page", which marks the heading that is read: beside the text where there is room, else closed above it.
  function onThisPage(main) {
    var headings = Array.from(main.querySelectorAll('h2[id]'));
    if (headings.length < 3 || document.documentElement.dataset.single) return;
    var links = headings.map(function (heading) { return olh.element('a', { href: '#' + heading.id }, heading.textContent); });
    var list = olh.element('ul', {}, links.map(function (link) { return olh.element('li', {}, link); }));
    var fold = olh.element('details', {}, [olh.element('summary', {}, 'On this page'), list]);
    var box = olh.element('nav', { 'class': 'here', 'aria-label': 'On this page' }, fold);
    main.before(box);
    var wide = matchMedia('(min-width: 1100px)'), asked = false, fit = function () { fold.open = wide.matches; };
    fit();
    wide.addEventListener('change', fit);
    function mark() {
      asked = false;
      var atEnd = innerHeight + scrollY >= document.scrollingElement.scrollHeight - 2 && scrollY > 0;
      var read = atEnd ? headings.length - 1 : headings.filter(function (one) { return one.getBoundingClientRect().top < 180; }).length - 1;
      links.forEach(function (link, at) {
        if (at !== read) return link.removeAttribute('aria-current');
        link.setAttribute('aria-current', 'location');
        if (link.offsetTop < box.scrollTop || link.offsetTop > box.scrollTop + box.clientHeight - 60) box.scrollTop = link.offsetTop - box.clientHeight / 2;
      });
    }
    addEventListener('scroll', function () {
      if (!asked) asked = requestAnimationFrame(mark);
    }, { passive: true });
    mark();
  }

  addEventListener('DOMContentLoaded', function () {
    var main = document.querySelector('main');
    onThisPage(main);
    main.querySelectorAll('h1[id], h2[id], h3[id]').forEach(headingLink);
    main.querySelectorAll('pre[data-example], pre.sh, pre.conf').forEach(copyButton);
    // A name such as --dry-run stays in one line.
    main.querySelectorAll(':not(pre) > code').forEach(function (code) {
      if (code.textContent.length <= 24) code.classList.add('short');
    });
  });
})();
