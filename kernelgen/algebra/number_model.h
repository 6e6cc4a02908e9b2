// What the algebra asks of a number model.
//
// A model's Value is what one arithmetic operation works on: a number, or as many as share a vector. An
// Element is one complex number, a Column the inputs or outputs of one transform.
#pragma once

#include "number/quad.h"

#include <concepts>
#include <optional>
#include <vector>

namespace zrfgen::gen {

template <class Model> using Values = std::vector<typename Model::Value>;
template <class Model> using Columns = std::vector<typename Model::Column>;

// Real arithmetic on values, as a recorded linear map needs it. weightedSum(base, terms) is the base, if
// there is one, and the sum of factor * value, added in the order given.
template <class Model>
concept LinearModel = requires(Model m, typename Model::Value a, std::optional<typename Model::Value> base,
                               std::vector<typename Model::Term> terms) {
    { m.add(a, a) } -> std::same_as<typename Model::Value>;
    { m.sub(a, a) } -> std::same_as<typename Model::Value>;
    { Model::negate(a) } -> std::same_as<typename Model::Value>;
    { m.weightedSum(base, terms) } -> std::same_as<typename Model::Value>;
    terms.push_back({Quad(1), a});
};

// What a model may be able to do besides.
struct Capabilities {
    // Columns of real numbers are told from others by isReal, and taken apart by realPart, imaginaryPart and
    // conjugate.
    bool realColumns = false;
    // Several columns share a vector: `products` has an angle for each of them, `multiplied` and
    // `addedToFirst` work on the elements of one column. Without this a value is an element.
    bool sharedVectors = false;
    // Some elements are known to be zero.
    bool zeroElements = false;
    // A rotation by an eighth of a turn multiplies before it adds.
    bool multipliesFirst = false;
};

// Complex arithmetic on values, and the way of elements into values and back.
template <class Model>
concept ComplexModel = LinearModel<Model> &&
    requires(Model m, typename Model::Value a, typename Model::Column column,
             std::vector<typename Model::Term> terms, Turn angle) {
    { Model::capabilities } -> std::convertible_to<Capabilities>;
    requires std::same_as<typename Model::Column, std::vector<typename Model::Element>>;
    // The product by exp(-2 pi i / 4).
    { Model::quarterTurn(a) } -> std::same_as<typename Model::Value>;
    // quarterTurn of the sum of factor * value.
    { m.turnedSum(terms) } -> std::same_as<typename Model::Value>;
    // The product by a positive number, taken at once, and by exp(-2 pi i angle).
    { m.scaled(a, Quad(1)) } -> std::same_as<typename Model::Value>;
    { m.product(a, angle) } -> std::same_as<typename Model::Value>;
    // How many columns a vector holds, and how many go together, in one vector or several: a sign waits in
    // all of them or in none.
    { m.perVector() } -> std::same_as<int>;
    { m.columnsTogether() } -> std::same_as<int>;
    // Of elements that go together the value of those from one on, as many as a vector holds, and the element
    // that stands in one place.
    { m.gathered(column, 0) } -> std::same_as<typename Model::Value>;
    { Model::element(a, 0) } -> std::same_as<typename Model::Element>;
};

} // namespace zrfgen::gen
