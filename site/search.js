"use strict";
// Shows the apps in which every typed word occurs. Without this file the catalogue shows them all.
const box = document.getElementById("search");
if (box) {
    const cards = [...document.querySelectorAll(".card")].map(card => ({
        element: card,
        text: (card.textContent + " " + card.closest(".category").querySelector("h2").textContent).toLowerCase(),
    }));
    const search = () => {
        const words = box.value.toLowerCase().split(/\s+/).filter(Boolean);
        let shown = 0;
        for (const card of cards) {
            const fits = words.every(word => card.text.includes(word));
            card.element.hidden = !fits;
            shown += fits;
        }
        for (const category of document.querySelectorAll(".category"))
            category.hidden = !category.querySelector(".card:not([hidden])");
        document.querySelector(".chips").hidden = words.length > 0;
        document.getElementById("nothing").hidden = shown > 0;
    };
    box.addEventListener("input", search);
    box.closest("label").hidden = false;
    search();
}
