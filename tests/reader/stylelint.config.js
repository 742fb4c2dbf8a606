export default {
  extends: "stylelint-config-standard",
  // Rules stand in the order of the page, which is not always that of their weight.
  rules: { "no-descending-specificity": null },
};
